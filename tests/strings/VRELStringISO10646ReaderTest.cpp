#include "VRELStringISO10646Reader.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace {

TEST(VRELStringISO10646ReaderTest, Decodes) {
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELStringISO10646Reader>);
  struct Row {
    char const* text;
    std::u16string decoded;
  };
  Row const rows[] = {
      {"\\X2\\00E9\\X0\\", u"\u00E9"},
      {"\\X2\\0041004200e9\\X0\\", u"AB\u00E9"},
      {"\\X2\\D83DDE00\\X0\\", u"\U0001F600"},
      {"\\X2\\DE00D83D\\X0\\", {char16_t(0xDE00), char16_t(0xD83D)}},
      {"\\X2\\FFFFabCD\\X0\\", {char16_t(0xFFFF), char16_t(0xABCD)}},
      {"\\X2\\0000\\X0\\", u""},
      {"\\X2\\004100000042\\X0\\", u"AB"},
      {"\\X2\\zzzz0041\\X0\\", u"A"},
      {"\\X2\\\\X0\\\\X0\\", u""},  // the inner markers are a quadruplet without digits
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.text);
    VRELStringISO10646Reader reader(row.text);
    VRELString out(L"before");
    EXPECT_EQ(reader.GetResult(out), 0);
    EXPECT_EQ(out.toUtf16(), row.decoded);
    EXPECT_FALSE(out.getBadConversion());
  }
}

TEST(VRELStringISO10646ReaderTest, OtherStringsFail) {
  for (char const* text : {static_cast<char const*>(nullptr), "", "\\X2\\", "\\X0\\", "\\X2\\\\X0\\", "\\X2\\X0\\",
                           "\\X2\\00E\\X0\\", "\\X2\\00E90\\X0\\", "\\X2\\00E9", "\\X2\\00E90041", "00E9\\X0\\",
                           "00E90041\\X0\\", "\\x2\\00E9\\x0\\", "\\X4\\00E9\\X0\\", "\\X2\\00E9\\X0\\ "}) {
    SCOPED_TRACE(text == nullptr ? "null" : text);
    VRELStringISO10646Reader reader(text);
    VRELString out(L"before");
    EXPECT_EQ(reader.GetResult(out), VREL_E_FAIL);
    EXPECT_EQ(out.length(), 0);
  }
}

TEST(VRELStringISO10646ReaderTest, SecondResultFailsWithSameString) {
  VRELStringISO10646Reader reader("\\X2\\00E9\\X0\\");
  VRELString out;
  EXPECT_EQ(reader.GetResult(out), 0);
  out = VRELString(L"other");
  EXPECT_EQ(reader.GetResult(out), VREL_E_FAIL);
  EXPECT_EQ(out.toUtf16(), u"\u00E9");
}

TEST(VRELStringISO10646ReaderTest, ResultFailsAfterDetermineEncoding) {
  VRELStringISO10646Reader reader("\\X2\\00E9\\X0\\");
  reader.DetermineEncoding();
  VRELString out(L"before");
  EXPECT_EQ(reader.GetResult(out), VREL_E_FAIL);
  EXPECT_EQ(out.length(), 0);
}

TEST(VRELStringISO10646ReaderTest, CopiesString) {
  char text[] = "\\X2\\00E9\\X0\\";
  VRELStringISO10646Reader reader(text);
  text[4] = 'F';
  VRELString out;
  EXPECT_EQ(reader.GetResult(out), 0);
  EXPECT_EQ(out.toUtf16(), u"\u00E9");
}

TEST(VRELStringISO10646ReaderTest, CountsQuadruplets) {
  struct Row {
    char const* text;
    int count;
  };
  Row const rows[] = {
      {nullptr, 0},
      {"", -2},
      {"a", -1},
      {"abcd", -1},
      {"abcdefgh", 0},
      {"abcdefghijk", 0},
      {"abcdefghijkl", 1},
      {"\\X2\\00E9\\X0\\", 1},
      {"\\X2\\00E90041\\X0\\", 2},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.text == nullptr ? "null" : row.text);
    EXPECT_EQ(VRELStringISO10646Reader(row.text).GetNumberOfQuadruplets(), row.count);
  }
}

TEST(VRELStringISO10646ReaderTest, CopiesQuadruplets) {
  VRELStringISO10646Reader reader("\\X2\\00E90041\\X0\\");
  char quadruplet[6] = "xxxxx";
  reader.GetQuadrupletAt(0, quadruplet);
  EXPECT_EQ(std::string(quadruplet, 6), std::string("00E9\0\0", 6));
  reader.GetQuadrupletAt(1, quadruplet);
  EXPECT_STREQ(quadruplet, "0041");
  for (int index : {2, -1, 100}) {
    SCOPED_TRACE(index);
    reader.GetQuadrupletAt(index, quadruplet);
    EXPECT_STREQ(quadruplet, "0041");
  }
  VRELStringISO10646Reader(nullptr).GetQuadrupletAt(0, quadruplet);
  VRELStringISO10646Reader("ab").GetQuadrupletAt(0, quadruplet);
  EXPECT_STREQ(quadruplet, "0041");
}

TEST(VRELStringISO10646ReaderTest, ReadsNumbers) {
  struct Row {
    char const* text;
    unsigned short value;
  };
  Row const rows[] = {
      {"00E9", 0xE9}, {"00e9", 0xE9}, {"FFFF", 0xFFFF}, {"0", 0},       {"", 0},           {"zzzz", 0},
      {"4G", 4},      {" 41", 0x41},  {"0x41", 0x41},   {"-1", 0xFFFF}, {"12345", 0x2345}, {"g041", 0},
  };
  VRELStringISO10646Reader reader("");
  for (Row const& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(reader.GetUChar(row.text), row.value);
  }
  EXPECT_EQ(reader.GetUChar(nullptr), 0);
}

TEST(VRELStringISO10646ReaderTest, ClassifiesSurrogates) {
  VRELStringISO10646Reader const reader("");
  for (int unit = 0; unit < 0x10000; ++unit) {
    auto const u = static_cast<unsigned short>(unit);
    ASSERT_EQ(reader.IsLeadSurrogate(u), unit >= 0xD800 && unit <= 0xDBFF) << unit;
    ASSERT_EQ(reader.IsTrailSurrogate(u), unit >= 0xDC00 && unit <= 0xDFFF) << unit;
  }
}

}  // namespace
