#include "OptionVocabulary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "VRELOptionName.h"

namespace {

using Names = std::vector<std::string>;

char Upper(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 32) : letter;
}

// The whole table, cell by cell.
int DistanceOf(std::string const& a, std::string const& b) {
  std::vector<std::vector<int>> cells(a.size() + 1, std::vector<int>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      if (i == 0 || j == 0) {
        cells[i][j] = static_cast<int>(i + j);
      } else {
        int const changed = cells[i - 1][j - 1] + (Upper(a[i - 1]) == Upper(b[j - 1]) ? 0 : 1);
        cells[i][j] = std::min({changed, cells[i - 1][j] + 1, cells[i][j - 1] + 1});
      }
    }
  }
  return cells[a.size()][b.size()];
}

Names KnownNames() {
  Names names;
  for (VRELOptionName const* const name : VRELOptionName::_optionNames) {
    if (name != nullptr) names.push_back(VRELString(*name).toUtf8());
  }
  for (char const* name : {
#define VREL_NAME(identifier, text) text,
#include "VRINOptionNames.def"
       }) {
    names.push_back(name);
  }
  return names;
}

}  // namespace

TEST(OptionVocabularyTest, ContainsVocabulary) {
  for (char const* name :
       {"ConvertAttributes", "convertATTRIBUTES", "/XStep/Import/Mode/Solid/Trim", "Import/Mode/Assem.true/Flatten",
        "Check JT Model", "PeltaR5.Assembly.Writer.JT.Representation", "*", "Import/Mode/Assem.*",
        // Names of VRINOptionName only.
        "SewTolerance", "Healing", "healing",
        // After a component, a representation and a direction.
        "Step.ConvertAttributes", "step.convertattributes", "Step.Assembly.ConvertAttributes",
        "*.*.Reader.ConvertAttributes", "Step.BRep.Writer.Import/Mode/Assem.true/Flatten", "Inventor.SewTolerance",
        "*.*.*.*"}) {
    EXPECT_TRUE(IsKnownOption(VRELString(std::string(name)))) << name;
  }
  for (char const* name : {"", "ConvertAttribute", "ConvertAttributesX", " ConvertAttributes", "Stp.ConvertAttributes",
                           "Step.Assembly.Reade.ConvertAttributes", "Step.Reader.ConvertAttributes", "Step",
                           "Step.Assembly.Reader.X.ConvertAttributes", "Step.Assembly.Reader",
                           "Assembly.Step.ConvertAttributes", "Import/Mode/Assem.true/Flat", "J\xC3\xB6rg"}) {
    EXPECT_FALSE(IsKnownOption(VRELString(std::string(name)))) << name;
  }
}

TEST(OptionVocabularyTest, FindsNamesAddedAtRunTime) {
  VRELString const text(L"BrivetTestOption");
  EXPECT_FALSE(IsKnownOption(text));
  {
    VRELOptionName const name(text);
    EXPECT_TRUE(IsKnownOption(text));
    EXPECT_TRUE(IsKnownOption(VRELString(L"bRIVETtESToPTION")));
    EXPECT_EQ(ClosestOptions(VRELString(L"BrivetTstOption")), Names{"BrivetTestOption"});
  }
  EXPECT_FALSE(IsKnownOption(text));
}

// U+017F, a long s, is equal to "s" if case is ignored.
TEST(OptionVocabularyTest, IgnoresCaseBeyondAscii) {
  EXPECT_TRUE(IsKnownOption(VRELString(L"\u017FewTolerance")));
  EXPECT_FALSE(IsKnownOption(VRELString(L"\u017FewTolerence")));
}

TEST(OptionVocabularyTest, SuggestsClosestNames) {
  struct Row {
    char const* name;
    Names closest;
  };
  Row const rows[] = {
      {"ConvertAtributes", {"ConvertAttributes", "ConvertEdgeAttributes"}},
      {"convertattribute", {"ConvertAttributes", "ConvertEdgeAttributes"}},
      {"ConvertEdgeAtributes", {"ConvertEdgeAttributes", "ConvertAttributes", "ImportEdgeAttributes"}},
      {"SewTolerence", {"SewTolerance"}},
      {"/XStep/Import/Mode/Solid/Tim",
       {"/XStep/Import/Mode/Solid/Trim", "/XStep/Import/Mode/Solid/Wire", "/XJt/Import/Mode/Solid/Trim"}},
      {"Import/Mode/Assem.true/Flaten",
       {"Import/Mode/Assem.true/Flatten", "Import/Mode/Assem.true/Free", "/XMorl/Import/Mode/Assem.true/Flatten"}},
      {"PIDX", {"PID"}},
      {"Foo", {}},
      {"Q", {}},
      {"Zzzzzzzzzzz", {}},
      {"", {}},
      // Leading tokens are corrected separately.
      {"Step.Asembly.Reader.SewTolerance", {"Step.Assembly.Reader.SewTolerance", "Step.Assembly.Reader.FileTolerance"}},
      {"Stp.ConvertAttributes", {"Step.ConvertAttributes", "ConvertAttributes", "Step.ConvertEdgeAttributes"}},
      {"*.*.Raeder.ConvertAtributes", {"*.*.Reader.ConvertAttributes", "*.*.Reader.ConvertEdgeAttributes"}},
      {"Step.Reader.ConvertAttributes", {"Step.ConvertAttributes"}},
      // Names that differ in case only are suggested once.
      {"PeltaR5.SaveVersio", {"PELTAR5.SaveVersion"}},
  };
  for (Row const& row : rows) EXPECT_EQ(ClosestOptions(VRELString(std::string(row.name))), row.closest) << row.name;
}

// Compares with an exhaustive search, for known names with random edits.
TEST(OptionVocabularyTest, SuggestsNoDistantName) {
  Names const known = KnownNames();
  std::mt19937 random(20261120);
  auto const below = [&random](std::size_t count) { return static_cast<std::size_t>(random() % count); };
  for (int round = 0; round < 60; ++round) {
    std::string name = known[below(known.size())];
    if (name.find('.') != name.npos) continue;
    for (std::size_t changes = 1 + below(4); changes > 0 && !name.empty(); --changes) {
      std::size_t const position = below(name.size());
      char const letter = static_cast<char>('a' + below(26));
      switch (below(3)) {
        case 0:
          name[position] = letter;
          break;
        case 1:
          name.insert(position, 1, letter);
          break;
        default:
          name.erase(position, 1);
      }
    }
    SCOPED_TRACE(name);
    int const limit = std::max(1, static_cast<int>(name.size() / 3));
    std::vector<int> distances;
    Names seen;
    for (std::string each : known) {
      int const distance = DistanceOf(name, each);
      std::transform(each.begin(), each.end(), each.begin(), Upper);
      if (distance > limit || std::find(seen.begin(), seen.end(), each) != seen.end()) continue;
      seen.push_back(each);
      distances.push_back(distance);
    }
    std::sort(distances.begin(), distances.end());
    distances.resize(std::min<std::size_t>(distances.size(), 3));
    std::vector<int> suggested;
    for (std::string const& each : ClosestOptions(VRELString(name))) suggested.push_back(DistanceOf(name, each));
    EXPECT_EQ(suggested, distances);
  }
}

TEST(OptionVocabularyTest, AcceptsLongNames) {
  EXPECT_EQ(ClosestOptions(VRELString(std::string(1000000, 'a'))), Names{});
  std::string tokens;
  for (int i = 0; i < 10000; ++i) tokens += "Step.";
  EXPECT_EQ(ClosestOptions(VRELString(tokens + "Assembly")), Names{});
  EXPECT_FALSE(IsKnownOption(VRELString(tokens + "Assembly")));
}
