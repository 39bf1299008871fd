#include "VRELFileHeader.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "StreamText.h"
#include "VRELStreamFormatter.h"
#include "VirtualSlot.h"

namespace {

VRELString Text(wchar_t const* text) {
  return VRELString(text);
}

std::string Narrow(VRELString const& text) {
  VRELValue const value(text);
  return static_cast<char const*>(value);
}

// Returns the value of a key as a string, or "none" if there is no such key.
std::string Found(VRELFileHeader const& header, VRELString const& key) {
  VRELString text(L"untouched");
  VRINResult const result = header.Get(key, text);
  if (result == VREL_S_OK) return Narrow(text);
  EXPECT_EQ(result, VREL_E_FAIL);
  EXPECT_EQ(Narrow(text), "untouched");
  return "none";
}

TEST(VRELFileHeaderTest, KeysHaveExactNames) {
  struct {
    VRELString const& key;
    char const* text;
  } const rows[] = {
      {VRELFileHeader::MODIFICATION_DATE, "Modification Date"},
      {VRELFileHeader::FILE_NAME, "File Name"},
      {VRELFileHeader::AUTHOR, "Author"},
      {VRELFileHeader::ORGANIZATION, "Organization"},
      {VRELFileHeader::SOURCE_SYSTEM, "Source System"},
      {VRELFileHeader::VERSION, "Version"},
      {VRELFileHeader::UNITS, "Units"},
      {VRELFileHeader::COMMENT, "Comment"},
      {VRELFileHeader::TOLERANCE, "Tolerance"},
      {VRELFileHeader::DOCUMENT_TYPE, "Document Type"},
      {VRELFileHeader::CONFIGURATIONS_COUNT, "Configurations Count"},
      {VRELFileHeader::ACTIVE_CONFIGURATION, "Active Configuration"},
      {VRELFileHeader::CONFIGURATIONS, "Configurations"},
  };
  VRELFileHeader const header;
  for (auto const& row : rows) {
    EXPECT_EQ(Narrow(row.key), row.text);
    EXPECT_EQ(Found(header, row.key), "none") << row.text;
  }
}

TEST(VRELFileHeaderTest, StartsWithOneEmptyModel) {
  VRELFileHeader header;
  EXPECT_EQ(header.GetModelsCount(), 1);
  EXPECT_EQ(header.GetCount(), 0);
  VRELString key(L"untouched");
  VRELValue value(7);
  EXPECT_EQ(header.Get(0, key, value), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(Narrow(key), "untouched");
  EXPECT_TRUE(value == VRELValue(7));
}

TEST(VRELFileHeaderTest, VirtualOperationsKeepSlots) {
  using GetValue = VRINResult (VRELFileHeader::*)(VRELString const&, VRELValue&) const;
  using GetText = VRINResult (VRELFileHeader::*)(VRELString const&, VRELString&) const;
  using GetRow = VRINResult (VRELFileHeader::*)(int, VRELString&, VRELValue&) const;
  using SetValue = VRINResult (VRELFileHeader::*)(VRELString const&, VRELValue const&);
  using SetText = VRINResult (VRELFileHeader::*)(VRELString const&, VRELString const&);
  EXPECT_EQ(SlotOf(&VRELFileHeader::GetModelsCount), 0U);
  EXPECT_EQ(SlotOf(&VRELFileHeader::SelectModel), 1U);
  EXPECT_EQ(SlotOf(static_cast<GetValue>(&VRELFileHeader::Get)), 2U);
  EXPECT_EQ(SlotOf(static_cast<GetText>(&VRELFileHeader::Get)), 3U);
  EXPECT_EQ(SlotOf(static_cast<SetValue>(&VRELFileHeader::Set)), 4U);
  EXPECT_EQ(SlotOf(static_cast<SetText>(&VRELFileHeader::Set)), 5U);
  EXPECT_EQ(SlotOf(&VRELFileHeader::AddSection), 6U);
  EXPECT_EQ(SlotOf(&VRELFileHeader::GetCount), 7U);
  EXPECT_EQ(SlotOf(static_cast<GetRow>(&VRELFileHeader::Get)), 8U);
}

TEST(VRELFileHeaderTest, GetReturnsSetValue) {
  VRELFileHeader header;
  EXPECT_EQ(header.Set(VRELFileHeader::AUTHOR, Text(L"Kim")), VREL_S_OK);
  EXPECT_EQ(header.Set(VRELFileHeader::TOLERANCE, VRELValue(0.25)), VREL_S_OK);
  EXPECT_EQ(header.Set(Text(L"My Key"), VRELValue(3)), VREL_S_OK);
  EXPECT_EQ(header.GetCount(), 3);
  VRELValue value;
  EXPECT_EQ(header.Get(VRELFileHeader::AUTHOR, value), VREL_S_OK);
  EXPECT_TRUE(value == VRELValue(Text(L"Kim")));
  EXPECT_EQ(header.Get(VRELFileHeader::TOLERANCE, value), VREL_S_OK);
  EXPECT_TRUE(value == VRELValue(0.25));
  EXPECT_EQ(header.Get(Text(L"My Key"), value), VREL_S_OK);
  EXPECT_TRUE(value == VRELValue(3));
  EXPECT_EQ(header.Get(VRELFileHeader::UNITS, value), VREL_E_FAIL);
  EXPECT_TRUE(value == VRELValue(3));
}

TEST(VRELFileHeaderTest, SetAcceptsLiterals) {
  VRELFileHeader header;
  EXPECT_EQ(header.Set(VRELFileHeader::AUTHOR, "Kim"), VREL_S_OK);
  EXPECT_EQ(header.Set(VRELFileHeader::VERSION, L"7"), VREL_S_OK);
  VRELValue value;
  EXPECT_EQ(header.Get(VRELFileHeader::AUTHOR, value), VREL_S_OK);
  EXPECT_TRUE(value == VRELValue(Text(L"Kim")));
  EXPECT_EQ(header.Get(VRELFileHeader::VERSION, value), VREL_S_OK);
  EXPECT_TRUE(value == VRELValue(Text(L"7")));
}

TEST(VRELFileHeaderTest, GetConvertsToString) {
  struct {
    VRELValue value;
    char const* text;
  } const rows[] = {
      {VRELValue(0.25), "0.250000"}, {VRELValue(3), "3"},          {VRELValue(true), "true"},
      {VRELValue(false), "false"},   {VRELValue(Text(L"x")), "x"}, {VRELValue(Text(L"")), ""},
      {VRELValue(), "untouched"},
  };
  for (auto const& row : rows) {
    VRELFileHeader header;
    header.Set(VRELFileHeader::COMMENT, row.value);
    EXPECT_EQ(Found(header, VRELFileHeader::COMMENT), row.text);
  }
}

TEST(VRELFileHeaderTest, SecondSetKeepsRow) {
  VRELFileHeader header;
  header.Set(VRELFileHeader::AUTHOR, Text(L"Kim"));
  header.Set(VRELFileHeader::UNITS, Text(L"mm"));
  header.Set(VRELFileHeader::AUTHOR, Text(L"Lee"));
  EXPECT_EQ(header.GetCount(), 2);
  VRELString key;
  VRELValue value;
  EXPECT_EQ(header.Get(0, key, value), VREL_S_OK);
  EXPECT_EQ(Narrow(key), "Author");
  EXPECT_TRUE(value == VRELValue(Text(L"Lee")));
}

TEST(VRELFileHeaderTest, GetReadsRowByIndex) {
  VRELFileHeader header;
  header.Set(VRELFileHeader::AUTHOR, Text(L"Kim"));
  header.Set(VRELFileHeader::CONFIGURATIONS_COUNT, VRELValue(2));
  VRELString key;
  VRELValue value;
  EXPECT_EQ(header.Get(1, key, value), VREL_S_OK);
  EXPECT_EQ(Narrow(key), "Configurations Count");
  EXPECT_TRUE(value == VRELValue(2));
  for (int row : {-1, 2, INT_MAX, INT_MIN}) EXPECT_EQ(header.Get(row, key, value), VREL_E_INVALID_ARGUMENT) << row;
  EXPECT_EQ(Narrow(key), "Configurations Count");
  EXPECT_TRUE(value == VRELValue(2));
}

TEST(VRELFileHeaderTest, SectionIsRowWithoutKey) {
  VRELFileHeader header;
  EXPECT_EQ(header.AddSection(Text(L"Section")), VREL_S_OK);
  EXPECT_EQ(header.AddSection(Text(L"Section")), VREL_S_OK);
  header.Set(VRELFileHeader::AUTHOR, Text(L"Kim"));
  EXPECT_EQ(header.GetCount(), 3);
  for (int row : {0, 1}) {
    VRELString key(L"of the row before");
    VRELValue value;
    EXPECT_EQ(header.Get(row, key, value), VREL_E_INVALID_ARGUMENT);
    EXPECT_EQ(Narrow(key), "");
    EXPECT_TRUE(value == VRELValue(Text(L"Section")));
  }
  EXPECT_EQ(Found(header, Text(L"")), "none");
  EXPECT_EQ(Found(header, Text(L"Section")), "none");
}

TEST(VRELFileHeaderTest, EmptyStringIsValidKey) {
  VRELFileHeader header;
  header.Set(Text(L""), Text(L"a"));
  header.Set(Text(L""), Text(L"b"));
  EXPECT_EQ(header.GetCount(), 1);
  EXPECT_EQ(Found(header, Text(L"")), "b");
}

TEST(VRELFileHeaderTest, SelectModelCreatesModel) {
  VRELFileHeader header;
  EXPECT_EQ(header.SelectModel(2), VREL_S_OK);
  EXPECT_EQ(header.GetModelsCount(), 3);
  EXPECT_EQ(header.GetCount(), 0);
  header.Set(VRELFileHeader::AUTHOR, Text(L"third"));
  EXPECT_EQ(header.SelectModel(0), VREL_S_OK);
  EXPECT_EQ(header.GetModelsCount(), 3);
  EXPECT_EQ(Found(header, VRELFileHeader::AUTHOR), "none");
  header.Set(VRELFileHeader::AUTHOR, Text(L"first"));
  EXPECT_EQ(header.SelectModel(1), VREL_S_OK);
  EXPECT_EQ(Found(header, VRELFileHeader::AUTHOR), "none");
  EXPECT_EQ(header.SelectModel(2), VREL_S_OK);
  EXPECT_EQ(Found(header, VRELFileHeader::AUTHOR), "third");
}

TEST(VRELFileHeaderTest, SelectModelRefusesNegativeIndex) {
  VRELFileHeader header;
  header.SelectModel(1);
  header.Set(VRELFileHeader::AUTHOR, Text(L"Kim"));
  for (int index : {-1, INT_MIN, INT_MAX}) EXPECT_EQ(header.SelectModel(index), VREL_E_INVALID_ARGUMENT) << index;
  EXPECT_EQ(header.GetModelsCount(), 2);
  EXPECT_EQ(Found(header, VRELFileHeader::AUTHOR), "Kim");
}

TEST(VRELFileHeaderTest, ResizeModelsKeepsCurrentIndex) {
  VRELFileHeader header;
  header.Set(VRELFileHeader::AUTHOR, Text(L"first"));
  EXPECT_EQ(header.ResizeModels(3), VREL_S_OK);
  EXPECT_EQ(header.GetModelsCount(), 3);
  EXPECT_EQ(Found(header, VRELFileHeader::AUTHOR), "first");
  EXPECT_EQ(header.ResizeModels(-1), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(header.GetModelsCount(), 3);

  header.SelectModel(2);
  header.Set(VRELFileHeader::AUTHOR, Text(L"third"));
  EXPECT_EQ(header.ResizeModels(2), VREL_S_OK);
  EXPECT_EQ(header.GetModelsCount(), 2);
  EXPECT_EQ(header.GetCount(), 0);
  EXPECT_EQ(Found(header, VRELFileHeader::AUTHOR), "none");
  EXPECT_EQ(header.Set(VRELFileHeader::AUTHOR, Text(L"lost")), VREL_E_FAIL);
  EXPECT_EQ(header.AddSection(Text(L"lost")), VREL_E_FAIL);
  VRELString key;
  VRELValue value;
  EXPECT_EQ(header.Get(0, key, value), VREL_E_INVALID_ARGUMENT);

  // A model that is created again is empty.
  EXPECT_EQ(header.ResizeModels(3), VREL_S_OK);
  EXPECT_EQ(header.GetCount(), 0);
  EXPECT_EQ(header.SelectModel(0), VREL_S_OK);
  EXPECT_EQ(Found(header, VRELFileHeader::AUTHOR), "first");
  EXPECT_EQ(header.ResizeModels(0), VREL_S_OK);
  EXPECT_EQ(header.GetModelsCount(), 0);
  EXPECT_EQ(header.GetCount(), 0);
}

TEST(VRELFileHeaderTest, CopySharesModels) {
  VRELFileHeader header;
  header.SelectModel(1);
  VRELFileHeader copy(header);
  copy.Set(VRELFileHeader::AUTHOR, Text(L"Kim"));
  EXPECT_EQ(Found(header, VRELFileHeader::AUTHOR), "Kim");
  copy.SelectModel(0);
  EXPECT_EQ(Found(copy, VRELFileHeader::AUTHOR), "none");
  EXPECT_EQ(Found(header, VRELFileHeader::AUTHOR), "Kim");
}

TEST(VRELFileHeaderTest, MatchesModelOfVector) {
  std::mt19937 random(10);
  VRELFileHeader header;
  std::vector<std::vector<std::pair<std::string, std::string>>> models(4);
  header.ResizeModels(4);
  std::size_t current = 0;
  for (int round = 0; round < 1500; ++round) {
    auto& rows = models[current];
    std::string const key = "key " + std::to_string(random() % 30);
    std::string const value = std::to_string(random() % 1000);
    switch (random() % 10) {
      case 0:
        current = random() % 4;
        header.SelectModel(static_cast<int>(current));
        break;
      case 1:
        header.AddSection(VRELString(value.c_str()));
        rows.emplace_back("", value);
        break;
      default: {
        header.Set(VRELString(key.c_str()), VRELString(value.c_str()));
        bool known = false;
        for (auto& row : rows) {
          if (row.first != key) continue;
          row.second = value;
          known = true;
        }
        if (!known) rows.emplace_back(key, value);
      }
    }
    ASSERT_EQ(header.GetCount(), static_cast<int>(models[current].size()));
  }
  for (std::size_t model = 0; model < 4; ++model) {
    header.SelectModel(static_cast<int>(model));
    for (std::size_t i = 0; i < models[model].size(); ++i) {
      VRELString key;
      VRELValue value;
      header.Get(static_cast<int>(i), key, value);
      ASSERT_EQ(Narrow(key), models[model][i].first);
      ASSERT_TRUE(value == VRELValue(VRELString(models[model][i].second.c_str())));
    }
  }
}

std::string Printed(VRELFileHeader const& header) {
  return TextOf([&](VRELOutputStream* stream) {
    VRELStreamFormatter formatter(stream);
    EXPECT_EQ(&(formatter << header), &formatter);
  });
}

TEST(VRELFileHeaderTest, PrintsNothingWithoutRows) {
  EXPECT_EQ(Printed(VRELFileHeader()), "");
}

TEST(VRELFileHeaderTest, PrintsOneLinePerRow) {
  VRELFileHeader header;
  header.AddSection(Text(L"Section 1"));
  header.Set(VRELFileHeader::AUTHOR, Text(L"x"));
  header.Set(VRELFileHeader::FILE_NAME, Text(L"bracket.stp"));
  header.Set(VRELFileHeader::TOLERANCE, VRELValue(0.25));
  header.AddSection(Text(L"Section 2"));
  header.Set(VRELFileHeader::CONFIGURATIONS_COUNT, VRELValue(2));
  header.Set(VRELFileHeader::ACTIVE_CONFIGURATION, VRELValue(true));
  header.Set(VRELFileHeader::AUTHOR, Text(L"y"));
  EXPECT_EQ(Printed(header),
            "Section 1\n"
            "Author                   : y\n"
            "File Name                : bracket.stp\n"
            "Tolerance                : 0.250000\n"
            "Section 2\n"
            "Configurations Count     : 2\n"
            "Active Configuration     : 1\n");
}

TEST(VRELFileHeaderTest, PrintsCurrentModel) {
  VRELFileHeader header;
  header.Set(VRELFileHeader::AUTHOR, Text(L"first"));
  header.SelectModel(1);
  header.Set(VRELFileHeader::AUTHOR, Text(L"second"));
  EXPECT_EQ(Printed(header), "Author                   : second\n");
  header.SelectModel(2);
  EXPECT_EQ(Printed(header), "");
  header.ResizeModels(1);
  EXPECT_EQ(Printed(header), "");
}

TEST(VRELFileHeaderTest, LongKeyMovesColon) {
  VRELFileHeader header;
  header.Set(Text(L"123456789 123456789 1234"), VRELValue(1));
  header.Set(Text(L"123456789 123456789 12345"), VRELValue(2));
  EXPECT_EQ(Printed(header),
            "123456789 123456789 1234 : 1\n"
            "123456789 123456789 12345 : 2\n");
}

TEST(VRELFileHeaderTest, OverlongKeyIsTruncated) {
  VRELFileHeader header;
  header.Set(VRELString(std::string(1000, 'k').c_str()), VRELValue(1));
  EXPECT_EQ(Printed(header), std::string(511, 'k') + "1\n");
}

TEST(VRELFileHeaderTest, PrintsKeysAsAscii) {
  VRELFileHeader header;
  header.Set(Text(L"Gr\u00F6\u00DFe 100%d"), Text(L"100%s"));
  EXPECT_EQ(Printed(header),
            "Gr\x1A\x1A"
            "e 100%d              : 100%s\n");
}

TEST(VRELFileHeaderTest, PrintsRowsWithoutValue) {
  VRELFileHeader header;
  header.Set(VRELFileHeader::COMMENT, VRELValue());
  header.Set(Text(L""), VRELValue(3));
  EXPECT_EQ(Printed(header),
            "Comment                  : \n"
            "                         : 3\n");
}

// Header with rows of its own, to test that printing uses the virtual operations.
struct OwnRows : VRELFileHeader {
  using VRELFileHeader::Get;
  int GetCount() const override { return 5; }
  VRINResult Get(int row, VRELString& key, VRELValue& value) const override {
    if (row == 1 || row == 2) key = VRELString(L"key");
    if (row != 3) value = VRELValue(row);
    return row == 1 ? VREL_S_OK : VREL_E_FAIL;
  }
};

TEST(VRELFileHeaderTest, PrintsThroughVirtualOperations) {
  // Row 0: a heading. Row 1: a key. Row 2: a failure with a key. Row 3: a failure without a value. Row 4: a heading.
  EXPECT_EQ(Printed(OwnRows()),
            "0\n"
            "key                      : 1\n"
            "4\n");
}

TEST(VRELFileHeaderTest, EndsLinesByEndlineObject) {
  VRELFileHeader header;
  header.Set(VRELFileHeader::AUTHOR, Text(L"x"));
  std::string const text = TextOf([&](VRELOutputStream* stream) {
    VRELStreamFormatter formatter(stream);
    formatter.endline() = new VRELStreamFormatter::VRELStreamFormatterObject("<end>");
    formatter << header;
  });
  EXPECT_EQ(text, "Author                   : x<end>");
}

}  // namespace
