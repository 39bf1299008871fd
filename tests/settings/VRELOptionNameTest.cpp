#include "VRELOptionName.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "ChildProcess.h"
#include "NameList.h"

namespace {

constexpr char kList[] = "VRELUtilities.m/src/settings/VRELOptionNames.def";
constexpr int kNameCount = 1053;

std::string TextOf(VRELOptionName const& name) {
  return static_cast<VRELString const>(name).toUtf8();
}

int ScoreOf(wchar_t const* known, wchar_t const* given) {
  int score = -7;
  EXPECT_EQ(VRELOptionName::Match(VRELString(known), VRELString(given), score), VREL_S_OK);
  return score;
}

bool IsKnown(VRELString const& text) {
  VRINResult const result = VRELOptionName::IsValid(text);
  EXPECT_TRUE(result == VREL_S_OK || result == VREL_E_FAIL);
  return result == VREL_S_OK;
}

// Returns `count` tokens "*" or "a" separated by dots.
VRELString Repeated(std::string const& token, int count) {
  std::string text = token;
  for (int i = 1; i < count; ++i) text += "." + token;
  return VRELString(text);
}

struct NameRow {
  int index;
  VRELOptionName const* member;
  char const* identifier;
  char const* text;
};

#define NAME_ROW(index, member, text)             \
  NameRow {                                       \
    index, &VRELOptionName::member, #member, text \
  }

NameRow const nameRows[] = {
    NAME_ROW(0, EnableProceduralGeometry, "EnableProceduralGeometry"),
    NAME_ROW(1, TranslationThroughLegacy, "TranslationThroughLegacy"),
    NAME_ROW(2, AcceptBadData, "AcceptBadData"),
    NAME_ROW(14, PELTAR5_SaveVersion, "PELTAR5.SaveVersion"),
    NAME_ROW(17, OBK_Import_Mode_Assem_true_Flatten_XIdeas, "/OBK/Import/Mode/Assem.true/Flatten!XIdeas"),
    NAME_ROW(21, LUZFilePath, "LUZFilePath"),
    NAME_ROW(63, ExportDittoBodies, "ExportDittoBodies"),
    NAME_ROW(65, Export_ExtendSplineSurfaces, "Export/ExtendSplineSurfaces"),
    NAME_ROW(99, HealBodyPostProcess_XProe, "HealBodyPostProcess|XProe"),
    NAME_ROW(1051, EnableSurfaceSimplification, "EnableSurfaceSimplification"),
    NAME_ROW(1052, EnableCurveSimplification, "EnableCurveSimplification"),
};

// Members whose identifiers do not follow from their names.
NameRow const exceptions[] = {
    NAME_ROW(-1, PELTAR5_Visualization_ExportTopology, "PELTAR5.Visualization.Reader.ExportTopology"),
    NAME_ROW(-1, PeltaR5_Assembly_Writer_Jt_Representation, "PeltaR5.Assembly.Writer.JT.Representation"),
    NAME_ROW(-1, CheckJTModel, "Check JT Model"),
    NAME_ROW(-1, HSFWriter, "HSF Writer"),
    NAME_ROW(-1, HealBodyPostProcess_XPeltaR4, "HealBodyPostProcess|XPeltaR4"),
    NAME_ROW(-1, OutputFormat, "Output Format"),
    NAME_ROW(-1, ThreeDCurvePref, "3DCurvePref"),
    NAME_ROW(-1, ThreeDCurveRegen, "3DCurveRegen"),
    NAME_ROW(-1, TranslateAttributePID, "PID"),
    NAME_ROW(-1, TranslateAttributePName, "PName"),
    NAME_ROW(-1, XMorl_HealBodyPostProcess_XPeltaR4, "/XMorl/HealBodyPostProcess|XPeltaR4"),
    NAME_ROW(-1, XPelta_UseSurfaceLimits, "XPelta/UserSurfaceLimits"),
    NAME_ROW(-1, XMorl_TransferAttributePID, "/XMorl/PID"),
    NAME_ROW(-1, XMorl_TransferAttributePName, "/XMorl/PName"),
    NAME_ROW(-1, XPELTAR5_BRep_QuickAttributes, "QuickAttributes"),
    NAME_ROW(-1, XGeneric_SubsetPeriodicCurves, "SubsetPeriodicCurves"),
    NAME_ROW(-1, XGeneric_ForFlatConeDoSpline, "ForFlatConeDoSpline"),
    NAME_ROW(-1, XIdeas_ServerName, "Ideas.ServerName"),
    NAME_ROW(-1, XIdeas_WriteTolerance, "Ideas.WriteTolerance"),
    NAME_ROW(-1, XAutodesk_TranslateAllStates, "/XMorl/TranslateAllStates/XMorl"),
};

std::string RuleIdentifier(std::string text) {
  if (text[0] == '/') text.erase(0, 1);
  for (char& c : text) {
    if (std::string("/.!| ").find(c) != std::string::npos) c = '_';
  }
  std::string const longWord = "XPeltaR4";
  for (std::size_t at; (at = text.find(longWord)) != std::string::npos;) text.replace(at, longWord.size(), "XPelta");
  return text;
}

TEST(VRELOptionNameListTest, NamesAreUnique) {
  std::set<std::string> identifiers;
  std::set<std::string> texts;
  for (ListedName const& name : ReadNameList(kList)) {
    EXPECT_TRUE(identifiers.insert(name.identifier).second) << name.identifier;
    EXPECT_TRUE(texts.insert(name.text).second) << name.text;
  }
  EXPECT_EQ(identifiers.size(), kNameCount);
}

// Clients depend on the names and their order.
TEST(VRELOptionNameListTest, NamesAndOrder) {
  EXPECT_EQ(FingerprintOf(ReadNameList(kList)), 0x2CBE7B7B9F325D06U);
}

TEST(VRELOptionNameListTest, IdentifiersFollowNames) {
  std::map<std::string, std::string> wanted;
  for (NameRow const& row : exceptions) wanted[row.text] = row.identifier;
  ASSERT_EQ(wanted.size(), 20U);
  for (ListedName const& name : ReadNameList(kList)) {
    auto const exception = wanted.find(name.text);
    if (exception == wanted.end()) {
      EXPECT_EQ(name.identifier, RuleIdentifier(name.text));
    } else {
      EXPECT_EQ(name.identifier, exception->second);
      wanted.erase(exception);
    }
  }
  EXPECT_TRUE(wanted.empty());
}

TEST(VRELOptionNameListTest, NamesPerFormat) {
  struct Row {
    char const* word;
    int count;
  };
  std::map<std::string, int> counts;
  for (ListedName const& name : ReadNameList(kList)) {
    if (name.text[0] == '/') ++counts[name.text.substr(1, name.text.find('/', 1) - 1)];
  }
  Row const rows[] = {{"XMorl", 179},   {"XGeneric", 151}, {"XStep", 73},     {"XIdeas", 66}, {"XPeltaR4", 63},
                      {"XIges", 49},    {"XVda", 34},      {"XPsMorl", 23},   {"XJt", 18},    {"XProe", 18},
                      {"XUg", 11},      {"XPeltaR5", 10},  {"ProEPeltR5", 8}, {"VRELXt", 7},  {"XCore", 7},
                      {"XHardwerk", 6}, {"OBK", 4},        {"PAL", 4},        {"XMorlPs", 3}, {"XMorlIges", 2},
                      {"XMorlUg", 1},   {"XParaAc", 1}};
  for (Row const& row : rows) EXPECT_EQ(counts[row.word], row.count) << row.word;
  EXPECT_EQ(counts.size(), std::size(rows));
}

TEST(VRELOptionNameTest, NamesAreRegisteredInOrder) {
  std::vector<ListedName> const listed = ReadNameList(kList);
  ASSERT_EQ(listed.size(), kNameCount);
  ASSERT_GE(VRELOptionName::_optionNames.size(), kNameCount);
  for (int i = 0; i < kNameCount; ++i) {
    ASSERT_NE(VRELOptionName::_optionNames[i], nullptr);
    EXPECT_EQ(TextOf(*VRELOptionName::_optionNames[i]), listed[static_cast<std::size_t>(i)].text);
  }
}

TEST(VRELOptionNameTest, MembersAreAtTheirIndices) {
  for (NameRow const& row : nameRows) {
    EXPECT_EQ(VRELOptionName::_optionNames[row.index], row.member) << row.identifier;
    EXPECT_EQ(TextOf(*row.member), row.text);
  }
  for (NameRow const& row : exceptions) EXPECT_EQ(TextOf(*row.member), row.text);
  EXPECT_EQ(TextOf(VRELOptionName::XPelta_Import_Mode_Assem_true_Free), "/XPeltaR4/Import/Mode/Assem.true/Free");
}

TEST(VRELOptionNameTest, SimilarNamesDiffer) {
  EXPECT_EQ(TextOf(VRELOptionName::Import_Mode_Assem), "Import/Mode/Assem");
  EXPECT_EQ(TextOf(VRELOptionName::XStep_Import_Mode_Assem), "/XStep/Import/Mode/Assem");
  EXPECT_EQ(ScoreOf(L"Import/Mode/Assem", L"/XStep/Import/Mode/Assem"), VREL_OPTION_NO_MATCH);
}

TEST(VRELOptionNameTest, Constants) {
  EXPECT_EQ(VREL_OPTION_TOKENS, 7);
  EXPECT_EQ(VREL_OPTION_SEPARATOR, L'.');
  EXPECT_EQ(VREL_OPTION_WILDCARD.toUtf8(), "*");
  EXPECT_FALSE(VREL_OPTION_WILDCARD.getBadConversion());
  EXPECT_EQ(VREL_OPTION_EXACT_MATCH, 0);
  EXPECT_EQ(VREL_OPTION_NO_MATCH, 65535);
}

TEST(VRELOptionNameTest, WildcardIsConstant) {
  EXPECT_FALSE(std::is_copy_constructible_v<VRELOptionName>);
  EXPECT_FALSE(std::is_copy_assignable_v<VRELOptionName>);
}

TEST(VRELOptionNameMatchTest, ScoresTokens) {
  struct Row {
    wchar_t const* known;
    wchar_t const* given;
    int score;
  };
  Row const rows[] = {
      {L"Step.Assembly", L"Step.Assembly", 0},
      {L"Step.Assembly", L"sTEP.aSSEMBLY", 0},
      {L"Step.Assembly", L"*.Assembly", 1},
      {L"Step.Assembly", L"*.assembly", 1},
      {L"Step.Assembly", L"Step.*", 2},
      {L"Step.Assembly", L"*.*", 3},
      {L"a.b.c.d", L"a.*.c.*", 10},
      {L"a.b.c.d", L"*.*.*.*", 15},
      {L"Step.Assembly", L"Step", 65535},
      {L"Step", L"Step.Assembly", 65535},
      {L"Step.Assembly", L"Step.Assembl", 65535},
      {L"Step.Assembly", L"Step.Assembly.", 65535},
      {L"Step.Assembly", L"*", 65535},
      {L"Step.Assembly", L"*.Assemblies", 65535},
      {L"Step.Assembly", L"Steps.*", 65535},
      {L"Step.Assembly", L"S*.Assembly", 65535},
      {L"Step.Assembly", L"**.Assembly", 65535},
      // A wildcard in the known name matches only itself.
      {L"*.Assembly", L"Step.Assembly", 65535},
      {L"*.Assembly", L"*.Assembly", 0},
      {L"*.Assembly", L"*.ASSEMBLY", 0},
      {L"*.Assembly", L"*.*", 3},
      {L"*", L"*", 0},
      {L"Step", L"*", 1},
      // No tokens, and empty tokens.
      {L"", L"", 0},
      {L"", L"*", 65535},
      {L"*", L"", 65535},
      {L"Step", L"", 65535},
      {L".", L".", 0},
      {L".", L"*.", 1},
      {L".", L".*", 2},
      {L".", L"", 65535},
      {L"a..b", L"a.*.b", 2},
      // Case folding of non-ASCII characters.
      {L"Stra\u00DFe.x", L"STRASSE.X", 0},
      {L"\u00C9chelle.x", L"\u00E9CHELLE.*", 2},
      {L"\u00E9.x", L"\u00E8.x", 65535},
  };
  for (Row const& row : rows) {
    EXPECT_EQ(ScoreOf(row.known, row.given), row.score) << VRELString(row.known) << " by " << VRELString(row.given);
  }
}

TEST(VRELOptionNameMatchTest, UninitializedString) {
  VRELString source(L"a");
  VRELString const taken(std::move(source));
  int score = -7;
  EXPECT_EQ(VRELOptionName::Match(source, taken, score), VREL_S_OK);
  EXPECT_EQ(score, 65535);
  EXPECT_EQ(VRELOptionName::Match(taken, source, score), VREL_S_OK);
  EXPECT_EQ(score, 65535);
}

TEST(VRELOptionNameMatchTest, SixteenWildcardsScoreNoMatch) {
  int score = -7;
  EXPECT_EQ(VRELOptionName::Match(Repeated("a", 16), Repeated("*", 16), score), VREL_S_OK);
  EXPECT_EQ(score, 65535);
  EXPECT_EQ(VRELOptionName::Match(Repeated("a", 17), Repeated("*", 17), score), VREL_S_OK);
  EXPECT_EQ(score, 131071);
}

TEST(VRELOptionNameMatchTest, WildcardAtIndex31Fails) {
  int score = -7;
  EXPECT_EQ(VRELOptionName::Match(Repeated("a", 31), Repeated("*", 31), score), VREL_S_OK);
  EXPECT_EQ(score, INT_MAX);
  for (int count : {32, 33, 34, 70}) {
    EXPECT_EQ(VRELOptionName::Match(Repeated("a", count), Repeated("*", count), score), VREL_E_FAIL) << count;
    EXPECT_EQ(score, INT_MIN);
    EXPECT_EQ(VRELOptionName::Match(Repeated("*", count), Repeated("*", count), score), VREL_S_OK);
    EXPECT_EQ(score, 0);
    EXPECT_EQ(VRELOptionName::Match(Repeated("a", count + 1), Repeated("*", count), score), VREL_S_OK);
    EXPECT_EQ(score, 65535);
    EXPECT_EQ(VRELOptionName::Match(Repeated("A", count), Repeated("a", count), score), VREL_S_OK);
    EXPECT_EQ(score, 0);
  }
}

TEST(VRELOptionNameIsValidTest, Vocabulary) {
  for (VRELOptionName const* const name : VRELOptionName::_optionNames) {
    if (name == nullptr) continue;
    EXPECT_TRUE(IsKnown(*name)) << TextOf(*name);
  }
  struct Row {
    wchar_t const* text;
    bool expected;
  };
  Row const rows[] = {
      {L"acceptbaddata", true},
      {L"ENABLECURVESIMPLIFICATION", true},
      {L"/XSTEP/import/MODE/assem", true},
      {L"PELTAR5.*", true},
      {L"*.SaveVersion", true},
      {L"*", true},
      {L"*.*", true},
      {L"PeltaR5.*.Writer.*.Representation", true},
      {L"*.*.*.*.*.*.*.*.*", false},
      {L"AcceptBadData.*", false},
      {L"*.NoSuchSetting", false},
      {L"NoSuchSetting", false},
      {L"AcceptBadDat", false},
      {L"AcceptBadDataa", false},
      {L"", false},
      {L".", false},
  };
  for (Row const& row : rows) EXPECT_EQ(IsKnown(VRELString(row.text)), row.expected) << VRELString(row.text);
}

TEST(VRELOptionNameIsValidTest, ModuleNamesAreValidWhileTheyExist) {
  VRELString const text(L"Module.Setting");
  int const before = VRELOptionName::_optionNames.size();
  EXPECT_FALSE(IsKnown(text));
  {
    VRELOptionName const name(text);
    ASSERT_EQ(VRELOptionName::_optionNames.size(), before + 1);
    EXPECT_EQ(VRELOptionName::_optionNames[before], &name);
    EXPECT_TRUE(IsKnown(text));
    EXPECT_TRUE(IsKnown(VRELString(L"MODULE.*")));
  }
  // The entry is kept, as null.
  ASSERT_EQ(VRELOptionName::_optionNames.size(), before + 1);
  EXPECT_EQ(VRELOptionName::_optionNames[before], nullptr);
  EXPECT_FALSE(IsKnown(text));
}

TEST(VRELOptionNameIsValidTest, SixteenWildcardsAreInvalid) {
  VRELOptionName const sixteen(Repeated("a", 16));
  EXPECT_TRUE(IsKnown(Repeated("A", 16)));
  EXPECT_FALSE(IsKnown(Repeated("*", 16)));
  VRELOptionName const forty(Repeated("a", 40));
  EXPECT_TRUE(IsKnown(Repeated("*", 40)));
}

TEST(VRELOptionNameTest, DestructionInAnyOrder) {
  int const before = VRELOptionName::_optionNames.size();
  auto first = std::make_unique<VRELOptionName>(VRELString(L"FirstOfTwo"));
  auto const second = std::make_unique<VRELOptionName>(VRELString(L"SecondOfTwo"));
  first.reset();
  EXPECT_EQ(VRELOptionName::_optionNames[before], nullptr);
  EXPECT_EQ(VRELOptionName::_optionNames[before + 1], second.get());
  EXPECT_TRUE(IsKnown(VRELString(L"SecondOfTwo")));
}

// Clients can remove entries from the public array.
TEST(VRELOptionNameTest, DestructionFindsMovedEntry) {
  ChildResult const child = RunInChild([] {
    auto& names = VRELOptionName::_optionNames;
    auto* const first = new VRELOptionName(VRELString(L"First"));
    auto* const second = new VRELOptionName(VRELString(L"Second"));
    int const place = vrelArrayRemove<VRELOptionName*>(names, first);
    delete second;
    bool const isGone = names.size() == place + 1 && names[place] == nullptr;
    delete first;
    names.clear();
    return isGone && VRELOptionName::IsValid(VRELString(L"AcceptBadData")) == VREL_E_FAIL ? 0 : 1;
  });
  EXPECT_EQ(child.exitStatus, 0);
  EXPECT_EQ(child.signal, 0);
}

// A static object of the program is destroyed before those of the library.
TEST(VRELOptionNameTest, NamesOutliveClients) {
  ChildResult const child = RunInChild([] {
    struct LastWord {
      VRELOptionName name{VRELString(L"Client.Setting")};
      ~LastWord() {
        VRINResult const own = VRELOptionName::IsValid(VRELString(L"client.setting"));
        VRINResult const last = VRELOptionName::IsValid(VRELString(L"EnableCurveSimplification"));
        std::printf("%d %d", own == VREL_S_OK, last == VREL_S_OK);
      }
    };
    static LastWord const lastWord;
    return 0;
  });
  EXPECT_EQ(child.exitStatus, 0);
  EXPECT_EQ(child.output, "1 1");
}

}  // namespace
