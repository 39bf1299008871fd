#include "VRELOptions.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ChildProcess.h"
#include "OpenDescriptors.h"
#include "RecordingListener.h"
#include "ScratchDirectory.h"
#include "StreamText.h"
#include "VRELEventLevel.h"
#include "VRELOption.h"
#include "VRELOptionConstants.h"
#include "VRELOptionToken.h"
#include "VRELStreamFormatter.h"
#include "VRELStringOutputStream.h"
#include "VRELValue.h"

namespace {

using Texts = std::vector<std::string>;

std::string NameOf(VRELOption const& option) {
  VRELString name(L"(none)");
  option.GetName(name);
  return name.toUtf8();
}

std::string ValueOf(VRELOption const& option) {
  VRELString text(L"(none)");
  option.GetValue(text);
  return text.toUtf8();
}

std::string DefaultOf(VRELOption const& option) {
  VRELString text(L"(none)");
  option.GetDefaultValue(text);
  return text.toUtf8();
}

VRELValue::VRELValueType KindOf(VRELOption const& option) {
  VRELValue::VRELValueType kind = VRELValue::UnknownType;
  option.GetValueType(kind);
  return kind;
}

VRELOption Named(std::string const& name, int value = 0) {
  VRELOption option{VRELString(name)};
  option.SetValue(value);
  return option;
}

// Returns the name of the option that a look-up finds; "-" for none.
std::string Find(VRELOptions const& options, std::string const& name) {
  VRELOption* option = nullptr;
  if (options.GetOption(VRELString(name), option).IsFailure()) return "-";
  return option != nullptr ? NameOf(*option) : "(null)";
}

VRELOption const* Get(VRELOptions const& options, std::string const& name) {
  VRELOption* option = nullptr;
  options.GetOption(VRELString(name), option);
  return option;
}

bool Has(VRELOptions const& options, std::string const& name) {
  VRELOption option = Named(name);
  return options.HasOption(option);
}

// Returns the remaining names of the enumeration.
Texts Rest(VRELOptions const& options) {
  Texts names;
  VRELOption* option = nullptr;
  while (options.GetNext(option).IsSuccess()) names.push_back(NameOf(*option));
  EXPECT_EQ(option, nullptr);
  return names;
}

Texts Names(VRELOptions const& options) {
  options.InitEnumeration();
  return Rest(options);
}

void AddAll(VRELOptions& options, Texts const& names) {
  for (std::string const& name : names) EXPECT_EQ(options.AddOption(VRELString(name), 1), VREL_S_OK) << name;
}

TEST(VRELOptionsTest, Constants) {
  EXPECT_EQ(VREL_OPTION_TOKENS, 7);
  EXPECT_EQ(VREL_OPTION_SEPARATOR, L'.');
  EXPECT_EQ(VREL_OPTION_WILDCARD.toUtf8(), "*");
}

TEST(VRELOptionsTest, StartsEmpty) {
  VRELOptions const options;
  EXPECT_EQ(options.Size(), 0);
  VRELOption* option = nullptr;
  EXPECT_EQ(options.GetNext(option), VREL_E_FAIL);
  EXPECT_EQ(options.GetNext(option), VREL_E_FAIL);
  EXPECT_EQ(Find(options, "X"), "-");
  EXPECT_FALSE(Has(options, "X"));
}

TEST(VRELOptionsTest, AddOptionWithoutNameFails) {
  VRELOptions options;
  EXPECT_EQ(options.AddOption(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(options.AddOption(VRELOption()), VREL_E_OPTION_UNSET);
  EXPECT_EQ(options.AddOption(VRELOption(VRELString(L"X"))), VREL_E_OPTION_UNSET);
  EXPECT_EQ(options.AddOption(L"", 1), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(options.AddOptionParseValue(L"", L"1"), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(options.Size(), 0);
  EXPECT_EQ(Names(options), Texts{});
}

TEST(VRELOptionsTest, AddOptionWithEmptyTokenFails) {
  VRELOptions options;
  for (wchar_t const* name : {L"A.", L"A..B", L".A", L".", L"..", L"A.B..C.D.E.F.G.H.I"}) {
    EXPECT_EQ(options.AddOption(name, 1), VREL_E_FAIL) << VRELString(name);
  }
  EXPECT_EQ(options.Size(), 0);
  EXPECT_EQ(Find(options, "A"), "-");
}

TEST(VRELOptionsTest, AddOptionCopies) {
  VRELOptions options;
  VRELOption option = Named("Step.X", 3);
  ASSERT_EQ(options.AddOption(option), VREL_S_OK);
  option.SetValue(4);
  VRELOption const* const stored = Get(options, "Step.X");
  ASSERT_NE(stored, nullptr);
  EXPECT_NE(stored, &option);
  EXPECT_EQ(ValueOf(*stored), "3");
  ASSERT_EQ(options.AddOption(&option), VREL_S_OK);
  EXPECT_EQ(Get(options, "Step.X"), stored);
  EXPECT_EQ(ValueOf(*stored), "4");
}

TEST(VRELOptionsTest, GetOptionReturnsStoredObject) {
  VRELOptions options;
  options.AddOption(L"X", 1);
  VRELOption* option = nullptr;
  ASSERT_EQ(options.GetOption(L"Step.X", option), VREL_S_OK);
  option->SetValue(9);
  EXPECT_EQ(ValueOf(*Get(options, "X")), "9");
}

TEST(VRELOptionsTest, AddOptionByKind) {
  VRELOptions options;
  EXPECT_EQ(options.AddOption(L"Text", VRELString(L"wide \u00D6")), VREL_S_OK);
  EXPECT_EQ(options.AddOption(L"Chars", "narrow"), VREL_S_OK);
  EXPECT_EQ(options.AddOption(L"Null", static_cast<char const*>(nullptr)), VREL_S_OK);
  EXPECT_EQ(options.AddOption(L"Double", 2.5), VREL_S_OK);
  EXPECT_EQ(options.AddOption(L"Int", 7), VREL_S_OK);
  EXPECT_EQ(options.AddOption(L"Bool", true), VREL_S_OK);
  struct Row {
    char const* name;
    VRELValue::VRELValueType kind;
    char const* value;
  };
  for (Row const& row :
       {Row{"Text", VRELValue::StringType, "wide \u00D6"}, Row{"Chars", VRELValue::StringType, "narrow"},
        Row{"Null", VRELValue::StringType, ""}, Row{"Double", VRELValue::DoubleType, "2.500000"},
        Row{"Int", VRELValue::IntType, "7"}, Row{"Bool", VRELValue::BoolType, "true"}}) {
    SCOPED_TRACE(row.name);
    VRELOption const* const option = Get(options, row.name);
    ASSERT_NE(option, nullptr);
    EXPECT_EQ(KindOf(*option), row.kind);
    EXPECT_EQ(ValueOf(*option), row.value);
    EXPECT_EQ(DefaultOf(*option), row.value);
    bool isPrivate = true;
    EXPECT_EQ(option->IsPrivate(isPrivate), VREL_S_OK);
    EXPECT_FALSE(isPrivate);
  }
  EXPECT_EQ(options.Size(), 6);
}

TEST(VRELOptionsTest, SecondAdditionKeepsDefault) {
  VRELOptions options;
  options.AddOption(L"step.x", 1);
  VRELOption secret(VRELOptionName::XStep_Import_Mode_Assem, VRELString(L"text"), true);
  secret.ChangeName(L"Step.X");
  EXPECT_EQ(options.AddOption(secret), VREL_S_OK);
  EXPECT_EQ(options.Size(), 2);
  EXPECT_EQ(Names(options), Texts{"Step.X"});
  VRELOption const* const option = Get(options, "STEP.X");
  ASSERT_NE(option, nullptr);
  EXPECT_EQ(KindOf(*option), VRELValue::IntType);
  EXPECT_EQ(DefaultOf(*option), "1");
  EXPECT_EQ(ValueOf(*option), "text");
  bool isPrivate = false;
  option->IsPrivate(isPrivate);
  EXPECT_TRUE(isPrivate);
}

TEST(VRELOptionsTest, AddOptionToItself) {
  VRELOptions options;
  options.AddOption(L"X", 5);
  EXPECT_EQ(options.AddOption(Get(options, "X")), VREL_S_OK);
  EXPECT_EQ(ValueOf(*Get(options, "X")), "5");
  EXPECT_EQ(options.Size(), 2);
}

TEST(VRELOptionsTest, ShortNamesMatchLongerOnes) {
  VRELOptions options;
  AddAll(options, {"X"});
  EXPECT_EQ(Find(options, "Step.Reader.X"), "X");
  AddAll(options, {"Step.X"});
  EXPECT_EQ(Find(options, "Step.Reader.X"), "Step.X");
  EXPECT_EQ(Find(options, "Iges.Reader.X"), "X");
  EXPECT_EQ(Find(options, "Step.X"), "Step.X");
  EXPECT_EQ(Find(options, "X"), "X");
}

TEST(VRELOptionsTest, MoreSpecificOptionWins) {
  struct Row {
    Texts stored;
    std::string query;
    std::string found;
  };
  for (Row const& row : std::vector<Row>{
           {{"Step.*.X", "Step.Reader.X"}, "Step.Writer.X", "Step.*.X"},
           {{"Step.*.X", "Step.Reader.X"}, "Step.Reader.X", "Step.Reader.X"},
           // The first token has the highest priority.
           {{"A.*.X", "*.B.X"}, "A.B.X", "A.*.X"},
           {{"A.*.*.X", "*.B.C.X"}, "A.B.C.X", "A.*.*.X"},
           {{"A.*.X", "*.B.X"}, "Q.B.X", "*.B.X"},
           // Backtracking at each level.
           {{"A.B.C.X", "*.B.D.X"}, "A.B.D.X", "*.B.D.X"},
           {{"A.B.C.X", "A.*.D.X", "X"}, "A.B.D.X", "A.*.D.X"},
           {{"A.B.C.X", "A.*.D.X", "X"}, "A.B.E.X", "X"},
           // A "*" in the name matches only a stored "*".
           {{"Step.X"}, "*.X", "-"},
           {{"*.X"}, "Step.X", "*.X"},
           {{"*.X"}, "*.X", "*.X"},
           {{"X"}, "*.X", "X"},
           {{"*.B.X"}, "*.B.X", "*.B.X"},
           {{"A.B.X"}, "*.B.X", "-"},
           {{"A.B.X"}, "A.*.X", "-"},
           {{"A.*.X"}, "A.*.X", "A.*.X"},
           {{"*.X"}, "*", "-"},
           // Also as the last token.
           {{"Step.*"}, "Step.X", "-"},
           {{"Step.*"}, "Step.*", "Step.*"},
           {{"*"}, "X", "-"},
           {{"*"}, "Step.*", "*"},
           // Missing tokens match only wildcards.
           {{"Step.X"}, "X", "-"},
           {{"X"}, "Step.X", "X"},
           {{"Step.Reader.X"}, "Step.X", "-"},
           {{"Step.*.X"}, "Step.X", "Step.*.X"},
           // Case is ignored, and tokens are not parsed.
           {{"Step.X"}, "sTEP.x", "Step.X"},
           {{"Import/Mode/Assem.true/Free"}, "import/mode/assem.TRUE/free", "Import/Mode/Assem.true/Free"},
           {{"HealBodyPostProcess|XIges"}, "HealBodyPostProcess", "-"},
           {{"\u00D6l.Stra\u00DFe"}, "\u00D6L.stra\u00DFE", "\u00D6l.Stra\u00DFe"},
           // An empty token matches only a wildcard.
           {{"X"}, "A..X", "X"},
           {{"A.*.X"}, "A..X", "A.*.X"},
           {{"A.B.X"}, "A..X", "-"},
           {{"X"}, ".X", "X"},
           {{"X"}, "X.", "-"},
       }) {
    SCOPED_TRACE(row.query);
    VRELOptions options;
    AddAll(options, row.stored);
    EXPECT_EQ(Find(options, row.query), row.found);
  }
}

TEST(VRELOptionsTest, GetOptionFailureCodes) {
  VRELOptions options;
  options.AddOption(L"Step.Reader.X", 1);
  // Names of more than 7 tokens have nodes without an option on level 7.
  options.AddOption(L"a.b.c.d.e.f.deeper.Named", 1);
  options.AddOption(L"*.*.*.*.*.*.deeper.Wild", 1);
  options.AddOption(L"*.*.*.*.*.f.deeper.Last", 1);
  VRELOption other;
  struct Row {
    wchar_t const* name;
    long result;
    VRELOption* left;
  };
  for (Row const& row :
       {Row{L"", VREL_E_INVALID_ARGUMENT, &other}, Row{L"Missing", VREL_E_FAIL, &other},
        Row{L"Step.Reader.", VREL_E_FAIL, &other}, Row{L"X", VREL_E_FAIL, nullptr},
        Row{L"Step.X", VREL_E_FAIL, nullptr}, Row{L"Step.Writer.X", VREL_E_FAIL, nullptr},
        Row{L"a.b.c.d.e.f.Named", VREL_E_FAIL, nullptr}, Row{L"a.b.c.d.e.f.Last", VREL_E_FAIL, nullptr},
        Row{L"Wild", VREL_E_OPTION_UNSET, nullptr}, Row{L"a.b.Wild", VREL_E_OPTION_UNSET, nullptr},
        Row{L"a.b.c.d.e.f.Wild", VREL_E_OPTION_UNSET, nullptr}}) {
    SCOPED_TRACE(VRELString(row.name).toUtf8());
    VRELOption* option = &other;
    EXPECT_EQ(options.GetOption(row.name, option), row.result);
    EXPECT_EQ(option, row.left);
  }
  for (wchar_t const* name : {L"*.X", L"Step.*.X", L"*.*.*.*.*.*.Wild", L"*.*.*.*.*.*.Last", L"a.*.Named"}) {
    VRELOption* option = &other;
    EXPECT_TRUE(options.GetOption(name, option).IsFailure()) << VRELString(name);
    EXPECT_EQ(option, nullptr) << VRELString(name);
  }
}

// Returns `count` tokens separated by dots.
std::string Path(int count, std::string const& token) {
  std::string path;
  for (int i = 0; i < count; ++i) path += (i > 0 ? "." : "") + token;
  return path;
}

TEST(VRELOptionsTest, SevenTokensHaveNoWildcardLevels) {
  VRELOptions options;
  AddAll(options, {"a.b.c.d.e.f.X"});
  EXPECT_EQ(Find(options, "a.b.c.d.e.f.X"), "a.b.c.d.e.f.X");
  EXPECT_EQ(Find(options, "a.b.c.d.e.X"), "-");
  EXPECT_TRUE(Has(options, "A.b.c.d.e.f.x"));
  EXPECT_EQ(Names(options), Texts{"a.b.c.d.e.f.X"});
  // The same path with explicit wildcards.
  options.AddOption(L"Y", 1);
  options.AddOption(L"*.*.*.*.*.*.Y", 2);
  EXPECT_EQ(Names(options).size(), 2U);
  EXPECT_EQ(Find(options, "Y"), "*.*.*.*.*.*.Y");
}

TEST(VRELOptionsTest, LongNamesAreOnlyEnumerated) {
  for (int count : {8, 9, 100, 200000}) {
    SCOPED_TRACE(count);
    VRELOptions options;
    // Wildcards need less memory.
    std::string const name = Path(count, count > 100 ? "*" : "t");
    EXPECT_EQ(options.AddOption(VRELString(name), 1), VREL_S_OK);
    EXPECT_EQ(options.Size(), 1);
    EXPECT_EQ(Find(options, name), "-");
    EXPECT_FALSE(Has(options, name));
    EXPECT_EQ(Names(options), Texts{name});
    EXPECT_EQ(options.AddOption(VRELString(name), 2), VREL_S_OK);
    EXPECT_EQ(options.Size(), 2);
    EXPECT_EQ(Names(options), Texts{name});
    EXPECT_EQ(options.RemoveAll(), VREL_S_OK);
    EXPECT_EQ(Names(options), Texts{});
  }
}

TEST(VRELOptionsTest, GetOptionJoinsTokensFromSeventh) {
  VRELOptions options;
  AddAll(options, {"a.b.c.d.e.f.gh", "xyz"});
  EXPECT_EQ(Find(options, "a.b.c.d.e.f.g.h"), "a.b.c.d.e.f.gh");
  EXPECT_EQ(Find(options, "1.2.3.4.5.6.x.Y.z"), "xyz");
  EXPECT_EQ(Find(options, "1.2.3.4.5.6..xyz."), "xyz");
  EXPECT_EQ(Find(options, "1.2.3.4.5.6.x.z.y"), "-");
  EXPECT_EQ(Find(options, "1.2.3.4.5.6.7.xyz"), "-");
}

// UTF-7 can encode U+0000, which ends a token but not the name.
TEST(VRELOptionsTest, TokenEndsAtZero) {
  VRELOptions options;
  AddAll(options, {"A.B", "*.C.B", "gh", "D"});
  struct Row {
    char const* name;
    char const* found;
  };
  for (Row const& row : {Row{"A+AAA-x.B", "A.B"}, Row{"A.B+AAA-x", "A.B"}, Row{"A+AAA-.q.B+AAA-+AAA-", "A.B"},
                         Row{"+AAA-A.C.B", "*.C.B"}, Row{"*+AAA-x.C.B", "*.C.B"}, Row{"*+AAA-.A.B", "-"},
                         Row{"+AAA-", "-"}, Row{"1.2.3.4.5.6.g+AAA-7.h", "gh"}, Row{"A.+AAA-B", "-"}, Row{"D", "D"}}) {
    SCOPED_TRACE(row.name);
    VRELOption* option = nullptr;
    VRINResult const result = options.GetOption(VRELString(row.name, "UTF-7"), option);
    EXPECT_EQ(option != nullptr ? NameOf(*option) : "-", row.found);
    EXPECT_EQ(result, option != nullptr ? VREL_S_OK : VREL_E_FAIL);
  }
}

TEST(VRELOptionsTest, HasOptionIsExact) {
  VRELOptions options;
  AddAll(options, {"X", "Step.*.Y", "a.b.c.d.e.f.g.h"});
  VRELOption unset(VRELString(L"X"));
  EXPECT_FALSE(options.HasOption(unset));
  struct Row {
    char const* name;
    bool has;
  };
  for (Row const& row :
       {Row{"", false}, Row{"X", true}, Row{"x", true}, Row{"*.X", true}, Row{"*.*.*.*.*.*.X", true},
        Row{"Step.X", false}, Row{"Step.*.Y", true}, Row{"Step.Y", true}, Row{"Step.Reader.Y", false}, Row{"Y", false},
        Row{"*.Y", false}, Row{"X.", false}, Row{"Step..Y", false}, Row{"a.b.c.d.e.f.g.h", false},
        Row{"a.b.c.d.e.f.h", false}, Row{"Z", false}, Row{"*.*.*.*.*.*.*.X", false}}) {
    EXPECT_EQ(Has(options, row.name), row.has) << row.name;
  }
}

TEST(VRELOptionsTest, AddOptionParseValue) {
  struct Row {
    wchar_t const* text;
    VRELValue::VRELValueType kind;
    char const* value;
  };
  for (Row const& row : {Row{L"1", VRELValue::IntType, "1"},
                         Row{L"-17", VRELValue::IntType, "-17"},
                         Row{L"+3", VRELValue::IntType, "3"},
                         Row{L"0x1F", VRELValue::IntType, "31"},
                         Row{L"0", VRELValue::IntType, "0"},
                         Row{L"1.0", VRELValue::DoubleType, "1.000000"},
                         Row{L"-.5", VRELValue::DoubleType, "-0.500000"},
                         Row{L"2.", VRELValue::DoubleType, "2.000000"},
                         Row{L"1.5E2", VRELValue::DoubleType, "150.000000"},
                         Row{L"Yes", VRELValue::BoolType, "true"},
                         Row{L"true", VRELValue::BoolType, "true"},
                         Row{L"ON", VRELValue::BoolType, "true"},
                         Row{L"no", VRELValue::BoolType, "false"},
                         Row{L"False", VRELValue::BoolType, "false"},
                         Row{L"Off", VRELValue::BoolType, "false"},
                         Row{L"\"Off\"", VRELValue::StringType, "Off"},
                         Row{L"\"1\"", VRELValue::StringType, "1"},
                         Row{L"Offside", VRELValue::StringType, "Offside"},
                         Row{L"a \"b\" c", VRELValue::StringType, "a \"b\" c"},
                         Row{L"\"\"", VRELValue::StringType, ""},
                         Row{L"1 2", VRELValue::StringType, "1 2"},
                         Row{L".", VRELValue::StringType, "."},
                         Row{L"1,2", VRELValue::StringType, "1,2"},
                         Row{L"\u00D6", VRELValue::StringType, "\u00D6"}}) {
    SCOPED_TRACE(VRELString(row.text).toUtf8());
    VRELOptions options;
    EXPECT_EQ(options.AddOptionParseValue(L"Step.X", row.text), VREL_S_OK);
    VRELOption const* const option = Get(options, "Step.X");
    ASSERT_NE(option, nullptr);
    EXPECT_EQ(KindOf(*option), row.kind);
    EXPECT_EQ(ValueOf(*option), row.value);
    EXPECT_EQ(DefaultOf(*option), row.value);
  }
  VRELOptions options;
  EXPECT_EQ(options.AddOptionParseValue(L"A..X", L"1"), VREL_E_FAIL);
}

TEST(VRELOptionsTest, AddOptions) {
  for (bool overwrite : {false, true}) {
    SCOPED_TRACE(overwrite);
    VRELOptions mine;
    mine.AddOption(L"X", 1);
    mine.AddOption(L"Step.Y", 2);
    VRELOptions other;
    other.AddOption(L"x", 10);
    other.AddOption(L"*.Y", 20);
    other.AddOption(L"Step.*.Y", 30);
    EXPECT_EQ(mine.AddOptions(other, overwrite), VREL_S_OK);
    EXPECT_EQ(mine.Size(), overwrite ? 5 : 3);
    EXPECT_EQ(other.Size(), 3);
    EXPECT_EQ(ValueOf(*Get(mine, "X")), overwrite ? "10" : "1");
    EXPECT_EQ(NameOf(*Get(mine, "X")), overwrite ? "x" : "X");
    EXPECT_EQ(DefaultOf(*Get(mine, "X")), "1");
    EXPECT_EQ(ValueOf(*Get(mine, "Step.Y")), overwrite ? "30" : "2");
    EXPECT_EQ(ValueOf(*Get(mine, "Iges.Y")), "20");
    EXPECT_EQ(ValueOf(*Get(other, "Step.Y")), "30");
  }
}

// The options of a file are kept as bytes until they are requested.
TEST(VRELOptionsTest, AddOptionsTakesOptionsOfFile) {
  ScratchDirectory const directory;
  VRELString const path(directory.Write("options.cfg", "X=10\nStep.Y=20\nStep.Reader.Z=on\n"));
  for (bool overwrite : {false, true}) {
    SCOPED_TRACE(overwrite);
    VRELOptions mine;
    mine.AddOption(L"x", 1);
    VRELOptions other;
    ASSERT_EQ(other.ReadFromFile(path), VREL_S_OK);
    EXPECT_EQ(mine.AddOptions(other, overwrite), VREL_S_OK);
    EXPECT_EQ(mine.Size(), overwrite ? 4 : 3);
    EXPECT_EQ(ValueOf(*Get(mine, "X")), overwrite ? "10" : "1");
    EXPECT_EQ(ValueOf(*Get(mine, "Step.Y")), "20");
    EXPECT_EQ(ValueOf(*Get(mine, "Step.Reader.Z")), "true");
    EXPECT_EQ(ValueOf(*Get(other, "Step.Y")), "20");
  }
}

TEST(VRELOptionsTest, AddOptionsRestartsEnumeration) {
  VRELOptions other;
  AddAll(other, {"A", "B", "C"});
  VRELOption* option = nullptr;
  ASSERT_EQ(other.GetNext(option), VREL_S_OK);
  VRELOptions mine;
  EXPECT_EQ(mine.AddOptions(other, false), VREL_S_OK);
  EXPECT_EQ(mine.Size(), 3);
  VRELOptions empty;
  EXPECT_EQ(mine.AddOptions(empty, true), VREL_S_OK);
  EXPECT_EQ(mine.AddOptions(mine, false), VREL_S_OK);
  EXPECT_EQ(mine.Size(), 3);
  EXPECT_EQ(mine.AddOptions(mine, true), VREL_S_OK);
  EXPECT_EQ(mine.Size(), 6);
  EXPECT_EQ(Names(mine).size(), 3U);
}

TEST(VRELOptionsTest, EnumeratesDepthFirst) {
  VRELOptions options;
  // The slots of A, B, C, D and E are 8, 11, 14, 0 and 3 of 17.
  AddAll(options, {"A", "B", "X.C", "C", "E.C", "D.C", "D", "*", "E", "D.B.C", "D.A.C"});
  Texts const expected = {"D", "E", "A", "B", "D.A.C", "D.B.C", "D.C", "E.C", "X.C", "C", "*"};
  // The slot of X is 88 * 37 modulo 17, which is 9.
  EXPECT_EQ(Names(options), expected);
  EXPECT_EQ(Names(options), expected);
  EXPECT_EQ(Rest(options), expected);
}

TEST(VRELOptionsTest, InitEnumerationRestarts) {
  VRELOptions options;
  AddAll(options, {"A", "D", "E"});
  VRELOption* option = nullptr;
  EXPECT_EQ(options.GetNext(option), VREL_S_OK);
  EXPECT_EQ(NameOf(*option), "D");
  EXPECT_EQ(options.GetNext(option), VREL_S_OK);
  EXPECT_EQ(NameOf(*option), "E");
  options.InitEnumeration();
  EXPECT_EQ(Rest(options), (Texts{"D", "E", "A"}));
}

TEST(VRELOptionsTest, EmptyBranchEndsTraversal) {
  VRELOptions options;
  AddAll(options, {"A", "D"});
  // The branch of E is between the two.
  EXPECT_EQ(options.AddOption(L"Q..E", 1), VREL_E_FAIL);
  EXPECT_EQ(Names(options), Texts{"D"});
  EXPECT_EQ(Find(options, "A"), "A");

  // As the first branch it ends only its own traversal.
  VRELOptions first;
  AddAll(first, {"A", "B"});
  EXPECT_EQ(first.AddOption(L"Q..E", 1), VREL_E_FAIL);
  EXPECT_EQ(Names(first), (Texts{"A", "B"}));

  // Below the root the traversal continues above the node that it ended at.
  VRELOptions lower;
  AddAll(lower, {"A.X", "D.X", "Y"});
  EXPECT_EQ(lower.AddOption(L"E..X", 1), VREL_E_FAIL);
  EXPECT_EQ(Names(lower), (Texts{"D.X", "Y"}));
}

TEST(VRELOptionsTest, OptionsBelowOptionAreSkipped) {
  VRELOptions options;
  AddAll(options, {"a.b.c.d.e.f.g", "a.b.c.d.e.f.x.g", "Z"});
  EXPECT_EQ(Names(options), (Texts{"a.b.c.d.e.f.g", "Z"}));
  // Visible if the option is added while the traversal is below it.
  VRELOptions late;
  AddAll(late, {"a.b.c.d.e.f.x.g"});
  VRELOption* option = nullptr;
  EXPECT_EQ(late.GetNext(option), VREL_S_OK);
  EXPECT_EQ(NameOf(*option), "a.b.c.d.e.f.x.g");
  AddAll(late, {"a.b.c.d.e.f.g"});
  EXPECT_EQ(Rest(late), Texts{"a.b.c.d.e.f.g"});
}

TEST(VRELOptionsTest, GetNextNode) {
  VRELOptions const options;
  VRELOptionToken* node = nullptr;
  EXPECT_EQ(options.GetNext(node), VREL_E_FAIL);
  EXPECT_EQ(node, nullptr);

  VRELOptionToken root(nullptr);
  VRELOptionToken* child = nullptr;
  VRELOptionToken* below = nullptr;
  root.AddToken(L"a", child);
  child->AddToken(L"*", below);
  root.InitEnumeration();
  node = &root;
  EXPECT_EQ(options.GetNext(node), VREL_E_FAIL);
  EXPECT_EQ(node, nullptr);

  below->SetOption(new VRELOption);
  root.InitEnumeration();
  node = &root;
  EXPECT_EQ(options.GetNext(node), VREL_S_OK);
  EXPECT_EQ(node, below);
  EXPECT_EQ(options.GetNext(node), VREL_S_OK);
  EXPECT_EQ(node, below);
  node = &root;
  EXPECT_EQ(options.GetNext(node), VREL_E_FAIL) << "the enumeration of the root is after its only child";

  child->SetOption(new VRELOption);
  root.InitEnumeration();
  node = &root;
  EXPECT_EQ(options.GetNext(node), VREL_S_OK);
  EXPECT_EQ(node, child);
  root.RemoveAll();
}

TEST(VRELOptionsTest, RemoveAll) {
  VRELOptions options;
  AddAll(options, {"A", "Step.B", "a.b.c.d.e.f.g.h.i", "*"});
  VRELOption* option = nullptr;
  options.GetNext(option);
  EXPECT_EQ(options.RemoveAll(), VREL_S_OK);
  EXPECT_EQ(options.Size(), 0);
  EXPECT_EQ(Rest(options), Texts{});
  EXPECT_EQ(Find(options, "A"), "-");
  EXPECT_EQ(options.RemoveAll(), VREL_S_OK);
  options.AddOption(L"A", true);
  options.AddOption(L"A", 2.0);
  EXPECT_EQ(options.Size(), 2);
  EXPECT_EQ(DefaultOf(*Get(options, "A")), "true");
  EXPECT_EQ(Names(options), Texts{"A"});
}

// Returns the names and values that a file adds, in enumeration order.
struct FileResult {
  VRINResult result = VREL_E_FAIL;
  int size = 0;
  std::map<std::string, std::string> values;
};

FileResult ReadFile(std::string const& bytes) {
  ScratchDirectory const directory;
  VRELOptions options;
  FileResult read;
  read.result = options.ReadFromFile(VRELString(directory.Write("options.cfg", bytes)));
  read.size = options.Size();
  VRELOption* option = nullptr;
  while (options.GetNext(option).IsSuccess()) read.values[NameOf(*option)] = ValueOf(*option);
  return read;
}

TEST(VRELOptionsTest, ReadFromFile) {
  struct Row {
    char const* what;
    std::string bytes;
    int size;
    std::map<std::string, std::string> values;
  };
  std::string const longValue(1018, 'v');
  for (Row const& row : std::vector<Row>{
           {"an empty file", "", 0, {}},
           {"a line", "Step.X=3\n", 1, {{"Step.X", "3"}}},
           {"no line end", "Step.X=3", 1, {{"Step.X", "3"}}},
           {"a colon", "Step.X: On\n", 1, {{"Step.X", "true"}}},
           {"a colon before an equals sign", "A:B=1\n", 1, {{"A:B", "1"}}},
           {"a colon after an equals sign", "A=B:1\n", 1, {{"A", "B:1"}}},
           {"carriage returns", "X = 1 \r\n\r\n  Y=2.5\r\n", 2, {{"X", "1"}, {"Y", "2.500000"}}},
           {"comments", "# a\n; b\n  # c\nX=1 # d\n", 1, {{"X", "1 # d"}}},
           {"commas", "X= a, b ,,c\nY=1,2\n", 2, {{"X", "a, b ,,c"}, {"Y", "1,2"}}},
           {"quotation marks", "X=\"Off\"\nY=\"a\",\"b\"\n", 2, {{"X", "Off"}, {"Y", "a\",\"b"}}},
           {"wildcards", "*.*.Reader.X=true\n", 1, {{"*.*.Reader.X", "true"}}},
           {"a path twice", "X=1\nx=2\n", 2, {{"x", "2"}}},
           {"a section", "X=1\n[Import]\nY=2\n", 1, {{"X", "1"}}},
           {"the section without a name again", "X=1\n[Import]\nY=2\n[]\nZ=3\n", 2, {{"X", "1"}, {"Z", "3"}}},
           {"the same key in both", "[Import]\nX=2\n[ ]\nX=1\n", 1, {{"X", "1"}}},
           {"sections alone", "[Import]\nX=1\n", 0, {}},
           {"a name that is refused", "A..B=1\nX=2\nC.=3\n", 1, {{"X", "2"}}},
           {"the longest line", "Name=" + longValue + "\nX=1\n", 2, {{"Name", longValue}, {"X", "1"}}},
           {"a longer line", "Name=" + longValue + "X=1\n", 2, {{"Name", longValue}, {"X", "1"}}},
           {"a value of one quotation mark", "X=\"\n", 1, {{"X", ""}}},
       }) {
    SCOPED_TRACE(row.what);
    FileResult const read = ReadFile(row.bytes);
    EXPECT_EQ(read.result, VREL_S_OK);
    EXPECT_EQ(read.size, row.size);
    EXPECT_EQ(read.values, row.values);
  }
}

TEST(VRELOptionsTest, ByteOrderMarkIsPartOfFirstName) {
  FileResult const read = ReadFile("\xEF\xBB\xBFX=1\nY=2\n");
  EXPECT_EQ(read.result, VREL_S_OK);
  EXPECT_EQ(read.size, 2);
  EXPECT_EQ(read.values.count("X"), 0U);
  EXPECT_EQ(read.values.count("Y"), 1U);
  // A comment after it is not a comment.
  EXPECT_EQ(ReadFile("\xEF\xBB\xBF# a comment\nY=2\n").result, VREL_E_FAIL);
}

TEST(VRELOptionsTest, SyntaxErrorRejectsFile) {
  for (std::string const& bytes : {std::string("X=1\nno separator"), std::string("X=1\nno separator\n"),
                                   std::string("X=1\n[Import\nY=2\n"), std::string("X=1\n=2\n"), std::string("X=\n"),
                                   std::string("X=1\n[Import]\nbad\n"), "Name=" + std::string(1019, 'v') + "\n"}) {
    FileResult const read = ReadFile(bytes);
    EXPECT_EQ(read.result, VREL_E_FAIL) << bytes;
    EXPECT_EQ(read.size, 0) << bytes;
    EXPECT_TRUE(read.values.empty()) << bytes;
  }
}

TEST(VRELOptionsTest, ReadFromFileFailureCodes) {
  ScratchDirectory const directory;
  VRELOptions options;
  EXPECT_EQ(options.ReadFromFile(L""), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(options.ReadFromFile(static_cast<std::FILE*>(nullptr)), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(options.ReadFromFile(VRELString(directory.Path("missing.cfg"))), VREL_E_FILE_OPEN);
  EXPECT_EQ(options.ReadFromFile(L"?"), VREL_E_FILE_OPEN);
  EXPECT_EQ(options.Size(), 0);
}

TEST(VRELOptionsTest, ReadFromFileClosesFile) {
  ScratchDirectory const directory;
  for (char const* bytes : {"X=1\n", "no separator\n", "[Import]\nX=1\n", ""}) {
    std::string const path = directory.Write("options.cfg", bytes);
    VRELOptions options;
    options.ReadFromFile(VRELString(path));
    EXPECT_EQ(CountOpenDescriptors(path), 0) << bytes;
  }
}

TEST(VRELOptionsTest, LastAdditionWins) {
  ScratchDirectory const directory;
  VRELString const path(directory.Write("options.cfg", "X=file\nY=file\n"));
  VRELOptions options;
  options.AddOption(L"X", "call");
  EXPECT_EQ(options.ReadFromFile(path), VREL_S_OK);
  options.AddOption(L"Y", "call");
  EXPECT_EQ(ValueOf(*Get(options, "X")), "file");
  EXPECT_EQ(DefaultOf(*Get(options, "X")), "call");
  EXPECT_EQ(ValueOf(*Get(options, "Y")), "call");
  EXPECT_EQ(DefaultOf(*Get(options, "Y")), "file");
  EXPECT_EQ(options.Size(), 4);
}

TEST(VRELOptionsTest, ReadFromFileKeepsStreamOpen) {
  std::string bytes = "X=1\n";
  std::FILE* const stream = fmemopen(bytes.data(), bytes.size(), "r");
  ASSERT_NE(stream, nullptr);
  VRELOptions options;
  EXPECT_EQ(options.ReadFromFile(stream), VREL_S_OK);
  EXPECT_EQ(Find(options, "X"), "X");
  EXPECT_EQ(std::fseek(stream, 0, SEEK_SET), 0);
  EXPECT_EQ(std::fgetc(stream), 'X');
  std::fclose(stream);
}

void AddEachKind(VRELOptions& options) {
  options.AddOption(L"Step.D", 3);
  options.AddOption(L"E", 0.25);
  options.AddOption(L"A", false);
  options.AddOption(L"B", "some text");
}

// Returns the output of a dump after its heading.
std::string Written(VRELOptions const& options) {
  std::string const text = TextOf([&](VRELOutputStream* stream) {
    VRELStreamFormatter formatter(stream);
    options.DumpOptions(formatter);
  });
  std::string const heading =
      "Options currently present and there values are given below : \n"
      "============================================================= \n"
      "\n";
  EXPECT_EQ(text.substr(0, heading.size()), heading);
  return text.substr(heading.size());
}

TEST(VRELOptionsTest, DumpOptions) {
  VRELOptions options;
  EXPECT_EQ(Written(options), "");
  AddEachKind(options);
  EXPECT_EQ(Written(options),
            "The Option \"Step.D\" value is\t\t=     3\n"
            "The Option \"E\" value is\t\t=     0.250000\n"
            "The Option \"A\" value is\t\t=     false\n"
            "The Option \"B\" value is\t\t=     some text\n");
}

TEST(VRELOptionsTest, DumpOptionsUsesEndline) {
  VRELOptions options;
  options.AddOption(L"A", 1);
  EXPECT_EQ(TextOf([&](VRELOutputStream* stream) {
              VRELStreamFormatter formatter(stream);
              formatter.endline() = formatter.empty();
              options.DumpOptions(formatter);
            }),
            "Options currently present and there values are given below : "
            "============================================================= "
            "The Option \"A\" value is\t\t=     1");
}

TEST(VRELOptionsTest, DumpFormatsByKind) {
  VRELOptions options;
  options.AddOption(L"D", 1.5);
  options.AddOption(L"D", 1);
  options.AddOption(L"E", 1);
  options.AddOption(L"E", "12");
  options.AddOption(L"A", 1);
  options.AddOption(L"A", "twelve");
  options.AddOption(L"B", true);
  options.AddOption(L"B", "off");
  EXPECT_EQ(Written(options),
            "The Option \"D\" value is\t\t=     1.000000\n"
            "The Option \"E\" value is\t\t=     12\n"
            "The Option \"A\" value is\t\t=     twelve\n"
            "The Option \"B\" value is\t\t=     false\n");
}

TEST(VRELOptionsTest, DumpRestartsEnumeration) {
  VRELOptions options;
  AddAll(options, {"A", "D", "E"});
  VRELOption* option = nullptr;
  EXPECT_EQ(options.GetNext(option), VREL_S_OK);
  EXPECT_EQ(Written(options),
            "The Option \"D\" value is\t\t=     1\n"
            "The Option \"E\" value is\t\t=     1\n"
            "The Option \"A\" value is\t\t=     1\n");
  // The dump reached the end, so that the next call returns the first option.
  EXPECT_EQ(options.GetNext(option), VREL_S_OK);
  EXPECT_EQ(NameOf(*option), "D");
}

// Returns the messages of a dump on the info channel; reads of boolean values use another channel.
Texts Dumped(VRELOptions const& options, char const* header, char const* format, char const* footer) {
  RecordingListener listener;
  options.Dump(header, format, footer);
  Texts texts;
  for (RecordedEvent const& event : listener.events) {
    if (event.level == VREL_LEVEL_INFO) texts.push_back(event.text);
  }
  return texts;
}

TEST(VRELOptionsTest, DumpPrintsOptionsOfFile) {
  ScratchDirectory const directory;
  VRELOptions options;
  ASSERT_EQ(options.ReadFromFile(VRELString(directory.Write("options.cfg", "Step.Y=20\n"))), VREL_S_OK);
  EXPECT_EQ(Dumped(options, nullptr, "%s = %s", nullptr), Texts{"Step.Y = 20"});
  // Printing keeps nothing, so that a second call prints the same.
  EXPECT_EQ(Dumped(options, nullptr, "%s = %s", nullptr), Texts{"Step.Y = 20"});
}

TEST(VRELOptionsTest, DumpPrintsOnInfoChannel) {
  VRELOptions options;
  AddEachKind(options);
  EXPECT_EQ(Dumped(options, "Options:", "%s = %s", "%d options"),
            (Texts{"Options:", "Step.D = 3", "E = 0.250000", "A = false", "B = some text", "%d options"}));
  EXPECT_EQ(Dumped(options, nullptr, "<%s|%s>", nullptr),
            (Texts{"<Step.D|3>", "<E|0.250000>", "<A|false>", "<B|some text>"}));
  EXPECT_EQ(Dumped(options, "Options:", nullptr, "."), (Texts{"Options:", "."}));
  EXPECT_EQ(Dumped(VRELOptions(), "Options:", "%s = %s", "."), (Texts{"Options:", "."}));
  // Header and footer are formats, which are unescaped twice.
  EXPECT_EQ(Dumped(VRELOptions(), "100%%%%", nullptr, "50%% of %s"), (Texts{"100%", "50% of %s"}));
}

// Model of the store: a list of paths.
class Model {
 public:
  using Tokens = std::vector<std::string>;

  struct Entry {
    std::string name;
    std::string value;
    std::string defaultValue;
  };

  static Tokens Split(std::string const& name) {
    Tokens tokens;
    if (name.empty()) return tokens;
    tokens.emplace_back();
    for (char const each : name) {
      if (each == '.') {
        tokens.emplace_back();
      } else {
        tokens.back() += static_cast<char>(each >= 'a' && each <= 'z' ? each - 'a' + 'A' : each);
      }
    }
    return tokens;
  }

  // The last token, the other tokens, and wildcards up to 7.
  static Tokens PathOf(Tokens tokens) {
    tokens.insert(tokens.begin(), tokens.back());
    tokens.pop_back();
    if (tokens.size() < 7) tokens.resize(7, "*");
    return tokens;
  }

  long Add(std::string const& name, std::string const& value, std::string const& defaultValue) {
    Tokens const tokens = Split(name);
    if (tokens.empty()) return VREL_E_INVALID_ARGUMENT;
    Tokens way;
    for (std::string const& token : PathOf(tokens)) {
      if (token.empty()) return VREL_E_FAIL;
      way.push_back(token);
      nodes.insert(way);
    }
    ++size;
    auto const added = entries.insert({way, Entry{name, value, defaultValue}});
    if (!added.second) added.first->second = Entry{name, value, added.first->second.defaultValue};
    return VREL_S_OK;
  }

  bool Has(std::string const& name) const {
    Tokens const tokens = Split(name);
    return !tokens.empty() && tokens.size() <= 7 && entries.count(PathOf(tokens)) > 0;
  }

  // Returns the matching path whose wildcards come last; null for none.
  Entry const* Get(std::string const& name) const {
    Tokens const query = Query(name);
    Entry const* best = nullptr;
    std::vector<bool> bestWildcards;
    for (auto const& [path, entry] : entries) {
      std::vector<bool> wildcards;
      if (!Matches(path, query, wildcards) || (best != nullptr && !(wildcards < bestWildcards))) continue;
      best = &entry;
      bestWildcards = wildcards;
    }
    return best;
  }

  // Returns the failure code of a look-up without "*".
  long FailureOf(std::string const& name) const {
    Tokens const query = Query(name);
    if (query.empty()) return VREL_E_INVALID_ARGUMENT;
    Tokens wild(7, "*");
    wild[0] = query[0];
    return nodes.count(wild) > 0 ? VREL_E_OPTION_UNSET : VREL_E_FAIL;
  }

  bool KnowsLastToken(std::string const& name) const {
    Tokens const query = Query(name);
    return !query.empty() && nodes.count({query[0]}) > 0;
  }

  void Merge(Model const& other, bool overwrite) {
    for (auto const& entry : other.entries) {
      if (overwrite || entries.count(entry.first) == 0) {
        Add(entry.second.name, entry.second.value, entry.second.defaultValue);
      }
    }
  }

  std::map<Tokens, Entry> entries;
  int size = 0;

 private:
  // The first key and the tokens below it.
  static Tokens Query(std::string const& name) {
    Tokens tokens = Split(name);
    if (tokens.empty()) return tokens;
    for (std::size_t i = 7; i < tokens.size(); ++i) tokens[6] += tokens[i];
    if (tokens.size() > 7) tokens.resize(7);
    tokens.insert(tokens.begin(), tokens.back());
    tokens.pop_back();
    return tokens;
  }

  static bool Matches(Tokens const& path, Tokens const& query, std::vector<bool>& wildcards) {
    if (path.size() != 7 || query.empty() || path[0] != query[0]) return false;
    for (std::size_t level = 1; level < 7; ++level) {
      bool const isExact = level < query.size() && path[level] == query[level];
      if (!isExact && path[level] != "*") return false;
      wildcards.push_back(!isExact);
    }
    return true;
  }

  std::set<Tokens> nodes;
};

class RandomNames {
 public:
  explicit RandomNames(unsigned int seed) : engine(seed) {}

  int Below(int limit) { return static_cast<int>(engine() % static_cast<unsigned int>(limit)); }

  // From few tokens, so that they collide; at most one in ten has an empty token.
  std::string Name(int longest, bool mayBeBroken) {
    static char const* const tokens[] = {"*", "*", "*", "Step", "STEP", "a", "A", "b", "C"};
    static char const* const last[] = {"X", "x", "Y", "z", "AX", "*"};
    int const count = 1 + Below(longest);
    int const broken = mayBeBroken && Below(10) == 0 ? Below(count) : -1;
    std::string name;
    for (int i = 0; i < count; ++i) {
      if (i > 0) name += '.';
      if (i != broken) name += i + 1 < count ? tokens[Below(9)] : last[Below(6)];
    }
    return name;
  }

 private:
  std::mt19937 engine;
};

struct Pair {
  void Add(std::string const& name, RandomNames& random) {
    int const number = random.Below(1000);
    bool const isText = random.Below(4) == 0;
    std::string const value = isText ? "v" + std::to_string(number) : std::to_string(number);
    VRINResult const result =
        isText ? options.AddOption(VRELString(name), VRELString(value)) : options.AddOption(VRELString(name), number);
    ASSERT_EQ(result, model.Add(name, value, value)) << name;
    ASSERT_EQ(options.Size(), model.size);
  }

  void LookUp(std::string const& name) const {
    VRELOption other;
    VRELOption* option = &other;
    VRINResult const result = options.GetOption(VRELString(name), option);
    Model::Entry const* const entry = model.Get(name);
    ASSERT_EQ(result.IsSuccess(), entry != nullptr) << name;
    if (entry != nullptr) {
      ASSERT_EQ(NameOf(*option), entry->name) << name;
      ASSERT_EQ(ValueOf(*option), entry->value) << name;
      ASSERT_EQ(DefaultOf(*option), entry->defaultValue) << name;
      return;
    }
    ASSERT_EQ(option, model.KnowsLastToken(name) ? nullptr : &other) << name;
    if (name.find('*') == std::string::npos) {
      ASSERT_EQ(result, model.FailureOf(name)) << name;
    }
  }

  void Enumerate() const {
    std::map<std::string, std::string> expected;
    for (auto const& entry : model.entries) expected[entry.second.name] = entry.second.value;
    std::map<std::string, std::string> found;
    std::size_t count = 0;
    VRELOption* option = nullptr;
    for (options.InitEnumeration(); options.GetNext(option).IsSuccess(); ++count) {
      found[NameOf(*option)] = ValueOf(*option);
    }
    ASSERT_EQ(count, model.entries.size());
    ASSERT_EQ(found, expected);
  }

  VRELOptions options;
  Model model;
};

TEST(VRELOptionsModelTest, AdditionsAndLookUps) {
  RandomNames random(20260101);
  for (int round = 0; round < 40; ++round) {
    SCOPED_TRACE(round);
    Pair pair;
    for (int step = 0; step < 300; ++step) {
      // Few options at first, so that many look-ups fail.
      if (random.Below(4) == 0) {
        ASSERT_NO_FATAL_FAILURE(pair.Add(random.Name(9, true), random));
      }
      std::string const name = random.Below(500) == 0 ? "" : random.Name(9, true);
      ASSERT_NO_FATAL_FAILURE(pair.LookUp(name));
      ASSERT_EQ(Has(pair.options, name), pair.model.Has(name)) << name;
    }
  }
}

TEST(VRELOptionsModelTest, EnumerationsAndMerges) {
  RandomNames random(47);
  for (int round = 0; round < 60; ++round) {
    SCOPED_TRACE(round);
    Pair mine;
    Pair other;
    for (int step = random.Below(150); step > 0; --step) {
      ASSERT_NO_FATAL_FAILURE(mine.Add(random.Name(7, false), random));
      ASSERT_NO_FATAL_FAILURE(other.Add(random.Name(7, false), random));
    }
    ASSERT_NO_FATAL_FAILURE(mine.Enumerate());
    bool const overwrite = random.Below(2) == 0;
    ASSERT_EQ(mine.options.AddOptions(other.options, overwrite), VREL_S_OK);
    mine.model.Merge(other.model, overwrite);
    ASSERT_EQ(mine.options.Size(), mine.model.size);
    ASSERT_NO_FATAL_FAILURE(mine.Enumerate());
    for (int step = 0; step < 30; ++step) ASSERT_NO_FATAL_FAILURE(mine.LookUp(random.Name(7, true)));
  }
}

// A megabyte of lines with names that `nameOf` returns.
template <class NameOf>
std::string OneMegabyte(NameOf const& nameOf) {
  std::string bytes;
  for (unsigned i = 0; bytes.size() < (1 << 20) - 1024; ++i) bytes += nameOf(i) + "=1\n";
  return bytes;
}

std::string ToLetters(unsigned number, int length) {
  std::string letters;
  for (; length > 0; --length, number /= 26) letters += static_cast<char>('a' + number % 26);
  return letters;
}

// Peak memory of this process since its start, in bytes.
long PeakMemory() {
  rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss * 1024;
}

TEST(VRELOptionsTest, ReadFromFileBoundsMemoryForLongNames) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "AddressSanitizer needs memory of its own";
#endif
  ScratchDirectory const directory;
  auto const withTokens = [](char const* token, int count) {
    return [=](unsigned i) {
      std::string name = ToLetters(i, 3);
      for (int level = 1; level < count; ++level) name += token;
      return name;
    };
  };
  for (std::string const& bytes : {OneMegabyte(withTokens(".a", 501)), OneMegabyte(withTokens(".ab", 300))}) {
    VRELString const path(directory.Write("options.cfg", bytes));
    auto const lines = std::count(bytes.begin(), bytes.end(), '\n');
    ChildResult const child = RunInChild([&] {
      long const before = PeakMemory();
      VRELOptions options;
      if (options.ReadFromFile(path).IsFailure() || options.Size() != lines) return 1;
      return PeakMemory() - before <= 50L << 20 ? 0 : 2;
    });
    EXPECT_EQ(child.exitStatus, 0) << child.errors;
  }
}

// Names of four letters, the most options that fit into a megabyte, with values of each kind.
TEST(VRELOptionsTest, ReadFromFileBoundsMemoryForManyNames) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "AddressSanitizer needs memory of its own";
#endif
  ScratchDirectory const directory;
  for (char const* value : {"1", "xy", "a,b", "1.5", "\xC3\xA9"}) {
    SCOPED_TRACE(value);
    std::string bytes;
    int lines = 0;
    for (; bytes.size() < (1 << 20) - 16; ++lines) {
      bytes += ToLetters(static_cast<unsigned>(lines), 4) + "=" + value + "\n";
    }
    VRELString const path(directory.Write("options.cfg", bytes));
    ChildResult const child = RunInChild([&] {
      long const before = PeakMemory();
      VRELOptions options;
      if (options.ReadFromFile(path).IsFailure() || options.Size() != lines) return 1;
      VRELOptions merged;
      if (bytes.back() == '1') merged.AddOptions(options, true);
      VRELOption* option = nullptr;
      if (options.GetOption(L"Step.Reader.baaa", option).IsFailure()) return 3;
      VRELString name;
      option->GetName(name);
      if (name != L"baaa") return 4;
      return PeakMemory() - before <= 50L << 20 ? 0 : 2;
    });
    EXPECT_EQ(child.exitStatus, 0) << child.errors;
  }
}

// Nodes of wildcards are made when they are requested, and behave as if they had been there before.
TEST(VRELOptionsTest, WildcardNodesAreMadeOnRequest) {
  VRELOptions options;
  AddAll(options, {"X", "a.Y"});
  VRELOption* option = nullptr;
  options.InitEnumeration();
  ASSERT_EQ(options.GetNext(option), VREL_S_OK);
  std::string const first = NameOf(*option);
  // A further branch below the first option's wildcards, in the middle of the enumeration.
  std::string const last = first == "X" ? "X" : "Y";
  AddAll(options, {"*.b." + last, "*.*.*.c." + last});
  EXPECT_EQ(Find(options, "q.b." + last), "*.b." + last);
  EXPECT_EQ(Find(options, "*.*.*.c." + last), "*.*.*.c." + last);
  EXPECT_EQ(Find(options, "X"), "X");
  EXPECT_EQ(Find(options, "a.Y"), "a.Y");
  EXPECT_TRUE(Has(options, "*.*.*.*.*.*.X"));
  EXPECT_FALSE(Has(options, "*.*.*.*.*.b.X"));
  EXPECT_EQ(Names(options).size(), 4U);
  AddAll(options, {"*.*.*.*.*.*.X"});
  EXPECT_EQ(Find(options, "X"), "*.*.*.*.*.*.X");
  EXPECT_EQ(Names(options).size(), 4U);
}

double ReadSeconds(std::string const& path, int expectedSize) {
  double best = 1e9;
  for (int run = 0; run < 5; ++run) {
    VRELOptions options;
    std::clock_t const start = std::clock();
    EXPECT_EQ(options.ReadFromFile(VRELString(path)), VREL_S_OK);
    best = std::min(best, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    EXPECT_EQ(options.Size(), expectedSize);
  }
  return best;
}

// 37 * 'A' + 'U' is 37 * 'B' + '0', so that all names have one hash code.
TEST(VRELOptionsTest, ReadFromFileIsLinearForCollidingNames) {
  ScratchDirectory const directory;
  std::string colliding;
  std::string ordinary;
  std::mt19937 random(11);
  constexpr int names = 30000;
  for (int i = 0; i < names; ++i) {
    for (int bit = 0; bit < 15; ++bit) colliding += (i >> bit & 1) != 0 ? "AU" : "B0";
    for (int letter = 0; letter < 30; ++letter) ordinary += static_cast<char>('A' + random() % 26);
    colliding += "=1\n";
    ordinary += "=1\n";
  }
  auto const seconds = [&](std::string const& bytes) {
    return ReadSeconds(directory.Write("options.cfg", bytes), names);
  };
  EXPECT_LE(seconds(colliding), 3 * seconds(ordinary));
  // The same keys as tokens below another one.
  auto const nested = [](std::string const& bytes) {
    std::string lines;
    for (std::size_t at = 0; at < bytes.size(); at += 33) lines += bytes.substr(at, 30) + ".X=1\n";
    return lines;
  };
  EXPECT_LE(seconds(nested(colliding)), 3 * seconds(nested(ordinary)));
}

TEST(VRELOptionsTest, DestroysDeepTreesIteratively) {
  std::string name = "a";
  for (int i = 0; i < 300000; ++i) name += ".a";
  VRELOptions options;
  EXPECT_EQ(options.AddOption(VRELString(name), 1), VREL_S_OK);
  VRELOption* option = nullptr;
  options.InitEnumeration();
  EXPECT_EQ(options.GetNext(option), VREL_S_OK);
  VRELOptions copy;
  EXPECT_EQ(copy.AddOptions(options, true), VREL_S_OK);
  EXPECT_EQ(copy.RemoveAll(), VREL_S_OK);
}

std::string StoredString(VRELOptions const& options, wchar_t const* name) {
  VRELOption* option = nullptr;
  VRELValue::VRELValueType type = VRELValue::UnknownType;
  VRELString value;
  if (options.GetOption(name, option).IsFailure()) return "no option";
  option->GetValueType(type);
  if (type != VRELValue::StringType) return "no string";
  option->GetValue(value);
  return value.toUtf8();
}

TEST(VRELOptionsTest, AddOptionAcceptsStrings) {
  VRELOptions options;
  EXPECT_EQ(options.AddOption(L"a", "narrow"), VREL_S_OK);
  EXPECT_EQ(options.AddOption(L"b", L"wide \u00D6"), VREL_S_OK);
  EXPECT_EQ(options.AddOption(L"c", std::string("text \xC3\x96")), VREL_S_OK);
  EXPECT_EQ(options.AddOption(L"d", std::string_view("view and more", 4)), VREL_S_OK);
  char buffer[] = "array";
  EXPECT_EQ(options.AddOption(L"e", buffer), VREL_S_OK);
  EXPECT_EQ(options.AddOption(L"f", static_cast<wchar_t const*>(nullptr)), VREL_S_OK);
  EXPECT_EQ(options.AddOption(L"g", static_cast<char const*>(nullptr)), VREL_S_OK);
  EXPECT_EQ(StoredString(options, L"a"), "narrow");
  EXPECT_EQ(StoredString(options, L"b"), "wide \xC3\x96");
  EXPECT_EQ(StoredString(options, L"c"), "text \xC3\x96");
  EXPECT_EQ(StoredString(options, L"d"), "view");
  EXPECT_EQ(StoredString(options, L"e"), "array");
  EXPECT_EQ(StoredString(options, L"f"), "");
  EXPECT_EQ(StoredString(options, L"g"), "");
}

}  // namespace
