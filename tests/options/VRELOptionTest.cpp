#include "VRELOption.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "RecordingListener.h"

namespace {

using Texts = std::vector<std::string>;
using Kind = VRELValue::VRELValueType;

constexpr int errorLevel = 80;
constexpr int warningLevel = 70;

// Sets an environment variable for the lifetime of the object.
class Variable {
 public:
  Variable(char const* aName, char const* text) : name(aName) { setenv(name, text, 1); }
  ~Variable() { unsetenv(name); }
  Variable(Variable const&) = delete;
  Variable& operator=(Variable const&) = delete;

 private:
  char const* name;
};

// An option name for the lifetime of the object.
VRELOptionName Probe() {
  return VRELOptionName(L"Probe.Name");
}

constexpr char probeVariable[] = "VRELProbe.Name";

VRELOption TextOption(wchar_t const* text) {
  VRELString value(text);
  return VRELOption(Probe(), value, false);
}

// An option of each kind, from unset to string.
std::vector<VRELOption> OneOfEachKind() {
  return {VRELOption(VRELString(L"Probe.Name")), VRELOption(Probe(), 1.5, false), VRELOption(Probe(), 7, false),
          VRELOption(Probe(), false, false), TextOption(L"steel")};
}

Kind KindOf(VRELOption const& option) {
  Kind kind = VRELValue::UnknownType;
  option.GetValueType(kind);
  return kind;
}

// Returns the kind of the value and its string form, "?" if there is none.
std::string Shown(VRELValue const& value) {
  Kind kind = VRELValue::UnknownType;
  value.GetValueType(kind);
  VRELString text(L"?");
  value.GetValue(text);
  return std::string(VRELValue::VRELValueTypeNames[kind]) + " " + text.toUtf8();
}

std::string Current(VRELOption const& option) {
  VRELValue value;
  option.GetValue(value);
  return Shown(value);
}

std::string Default(VRELOption const& option) {
  VRELValue value;
  option.GetDefaultValue(value);
  return Shown(value);
}

std::string Name(VRELOption const& option) {
  VRELString name(L"untouched");
  option.GetName(name);
  return name.toUtf8();
}

TEST(VRELOptionTest, IsNotPolymorphic) {
  EXPECT_FALSE(std::is_polymorphic_v<VRELOption>);
}

TEST(VRELOptionTest, ConstructorsSetBothValues) {
  VRELValue number(2.5);
  VRELString text(L"steel");
  VRELValue const constantNumber(3);
  struct Row {
    VRELOption option;
    Kind kind;
    char const* value;
    bool isPrivate;
  };
  Row const rows[] = {
      {VRELOption(Probe(), number, true), VRELValue::DoubleType, "double 2.500000", true},
      {VRELOption(Probe(), text, false), VRELValue::StringType, "string steel", false},
      {VRELOption(Probe(), true, true), VRELValue::BoolType, "bool true", true},
      {VRELOption(Probe(), 1.25, false), VRELValue::DoubleType, "double 1.250000", false},
      {VRELOption(Probe(), 7, true), VRELValue::IntType, "int 7", true},
      {VRELOption(Probe(), constantNumber, false), VRELValue::IntType, "int 3", false},
      {VRELOption(Probe(), VRELString(L"wood"), true), VRELValue::StringType, "string wood", true},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.value);
    Kind kind = VRELValue::UnknownType;
    EXPECT_EQ(row.option.GetValueType(kind), VREL_S_OK);
    EXPECT_EQ(kind, row.kind);
    EXPECT_EQ(Current(row.option), row.value);
    EXPECT_EQ(Default(row.option), row.value);
    EXPECT_EQ(Name(row.option), "Probe.Name");
    bool isPrivate = !row.isPrivate;
    EXPECT_EQ(row.option.IsPrivate(isPrivate), VREL_S_OK);
    EXPECT_EQ(isPrivate, row.isPrivate);
  }
}

TEST(VRELOptionTest, UnsetOptionFails) {
  VRELValue none;
  for (VRELOption const& option :
       {VRELOption(), VRELOption(VRELString(L"Probe.Name")), VRELOption(Probe(), none, true)}) {
    RecordingListener const listener;
    Kind kind = VRELValue::StringType;
    EXPECT_EQ(option.GetValueType(kind), VREL_E_OPTION_UNSET);
    EXPECT_EQ(kind, VRELValue::UnknownType);
    VRELValue value(77);
    VRELString text(L"untouched");
    bool flag = true;
    double number = 7.5;
    int integer = 77;
    EXPECT_EQ(option.GetName(text), VREL_E_OPTION_UNSET);
    EXPECT_EQ(option.IsPrivate(flag), VREL_E_OPTION_UNSET);
    EXPECT_EQ(option.GetDefaultValue(value), VREL_E_OPTION_UNSET);
    EXPECT_EQ(option.GetDefaultValue(text), VREL_E_OPTION_UNSET);
    EXPECT_EQ(option.GetDefaultValue(flag), VREL_E_OPTION_UNSET);
    EXPECT_EQ(option.GetDefaultValue(number), VREL_E_OPTION_UNSET);
    EXPECT_EQ(option.GetDefaultValue(integer), VREL_E_OPTION_UNSET);
    EXPECT_EQ(option.GetValue(value), VREL_E_OPTION_UNSET);
    for (bool fromEnvironment : {false, true}) {
      EXPECT_EQ(option.GetValue(text, fromEnvironment), VREL_E_OPTION_UNSET);
      EXPECT_EQ(option.GetValue(flag, fromEnvironment), VREL_E_OPTION_UNSET);
      EXPECT_EQ(option.GetValue(number, fromEnvironment), VREL_E_OPTION_UNSET);
      EXPECT_EQ(option.GetValue(integer, fromEnvironment), VREL_E_OPTION_UNSET);
    }
    EXPECT_EQ(option.GetValue(text), VREL_E_OPTION_UNSET);
    EXPECT_EQ(option.GetValue(flag), VREL_E_OPTION_UNSET);
    EXPECT_EQ(option.GetValue(number), VREL_E_OPTION_UNSET);
    EXPECT_EQ(option.GetValue(integer), VREL_E_OPTION_UNSET);
    EXPECT_EQ(Shown(value), "int 77");
    EXPECT_EQ(text.toUtf8(), "untouched");
    EXPECT_TRUE(flag);
    EXPECT_EQ(number, 7.5);
    EXPECT_EQ(integer, 77);
    EXPECT_TRUE(listener.events.empty());
  }
}

TEST(VRELOptionTest, NameRequiresValue) {
  VRELOption option(VRELString(L"Probe.Name"));
  EXPECT_EQ(Name(option), "untouched");
  EXPECT_EQ(option.SetValue(3), VREL_S_OK);
  EXPECT_EQ(Name(option), "Probe.Name");
  bool isPrivate = true;
  EXPECT_EQ(option.IsPrivate(isPrivate), VREL_S_OK);
  EXPECT_FALSE(isPrivate);

  VRELOption nameless;
  EXPECT_EQ(nameless.SetValue(3), VREL_S_OK);
  EXPECT_EQ(Name(nameless), "");
  EXPECT_EQ(nameless.IsPrivate(isPrivate), VREL_S_OK);
  EXPECT_FALSE(isPrivate);
}

TEST(VRELOptionTest, ChangeName) {
  VRELOption option(Probe(), 7, false);
  EXPECT_EQ(option.ChangeName(L"other"), VREL_S_OK);
  EXPECT_EQ(Name(option), "other");
  VRELOption unset;
  EXPECT_EQ(unset.ChangeName(L"later"), VREL_S_OK);
  EXPECT_EQ(unset.SetValue(true), VREL_S_OK);
  EXPECT_EQ(Name(unset), "later");
}

TEST(VRELOptionTest, TypedReadsConvert) {
  struct Row {
    VRELOption option;
    char const* text;
    bool flag;
    double number;
    int integer;
  };
  Row const rows[] = {
      {VRELOption(Probe(), 2.5, false), "2.500000", true, 2.5, 1},
      {VRELOption(Probe(), 7, false), "7", true, 7.0, 7},
      {VRELOption(Probe(), true, false), "true", true, 1.0, 1},
      {VRELOption(Probe(), false, false), "false", false, 0.0, 0},
      {TextOption(L"12"), "12", true, 12.0, 12},
      {TextOption(L"off"), "off", false, 0.0, 0},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.text);
    RecordingListener const listener;
    for (bool fromDefault : {false, true}) {
      VRELString text;
      bool flag = !row.flag;
      double number = -1.0;
      int integer = -1;
      EXPECT_EQ(fromDefault ? row.option.GetDefaultValue(text) : row.option.GetValue(text), VREL_S_OK);
      EXPECT_EQ(fromDefault ? row.option.GetDefaultValue(flag) : row.option.GetValue(flag), VREL_S_OK);
      EXPECT_EQ(fromDefault ? row.option.GetDefaultValue(number) : row.option.GetValue(number), VREL_S_OK);
      EXPECT_EQ(fromDefault ? row.option.GetDefaultValue(integer) : row.option.GetValue(integer), VREL_S_OK);
      EXPECT_EQ(text.toUtf8(), row.text);
      EXPECT_EQ(flag, row.flag);
      EXPECT_EQ(number, row.number);
      EXPECT_EQ(integer, row.integer);
    }
    EXPECT_TRUE(listener.events.empty());
  }
}

TEST(VRELOptionTest, UnparsableStringFails) {
  VRELOption const option = TextOption(L"abc");
  // The message is sent to a silent channel.
  RecordingListener const listener;
  for (bool fromDefault : {false, true}) {
    bool flag = true;
    double number = 7.5;
    int integer = 77;
    EXPECT_EQ(fromDefault ? option.GetDefaultValue(flag) : option.GetValue(flag), VREL_E_FAIL);
    EXPECT_EQ(fromDefault ? option.GetDefaultValue(number) : option.GetValue(number), VREL_E_FAIL);
    EXPECT_EQ(fromDefault ? option.GetDefaultValue(integer) : option.GetValue(integer), VREL_E_FAIL);
    EXPECT_TRUE(flag);
    EXPECT_EQ(number, 7.5);
    EXPECT_EQ(integer, 77);
  }
  EXPECT_TRUE(listener.events.empty());
}

TEST(VRELOptionTest, ReadsReturnCurrentValue) {
  VRELOption option(Probe(), 7, false);
  EXPECT_EQ(option.SetValue(8), VREL_S_OK);
  EXPECT_EQ(Current(option), "int 8");
  EXPECT_EQ(Default(option), "int 7");
  int integer = 0;
  EXPECT_EQ(option.GetValue(integer), VREL_S_OK);
  EXPECT_EQ(integer, 8);
  EXPECT_EQ(option.GetDefaultValue(integer), VREL_S_OK);
  EXPECT_EQ(integer, 7);
  VRELValue value;
  EXPECT_EQ(option.GetValue(value), VREL_S_OK);
  EXPECT_EQ(option.GetDefaultValue(value), VREL_S_OK);
}

TEST(VRELOptionTest, FirstValueSetsType) {
  struct Row {
    VRELValue value;
    char const* shown;
  };
  Row const rows[] = {{VRELValue(1.5), "double 1.500000"},
                      {VRELValue(7), "int 7"},
                      {VRELValue(true), "bool true"},
                      {VRELValue(VRELString(L"steel")), "string steel"}};
  for (Row const& row : rows) {
    VRELOption option;
    EXPECT_EQ(option.SetValue(row.value), VREL_S_OK);
    EXPECT_EQ(Current(option), row.shown);
    EXPECT_EQ(Default(option), row.shown);
  }
  VRELOption text;
  EXPECT_EQ(text.SetValue(VRELString(L"steel")), VREL_S_OK);
  EXPECT_EQ(Current(text) + ", " + Default(text), "string steel, string steel");
  VRELOption flag;
  EXPECT_EQ(flag.SetValue(true), VREL_S_OK);
  EXPECT_EQ(Current(flag) + ", " + Default(flag), "bool true, bool true");
  VRELOption number;
  EXPECT_EQ(number.SetValue(0.5), VREL_S_OK);
  EXPECT_EQ(Current(number) + ", " + Default(number), "double 0.500000, double 0.500000");
  VRELOption integer;
  EXPECT_EQ(integer.SetValue(9), VREL_S_OK);
  EXPECT_EQ(Current(integer) + ", " + Default(integer), "int 9, int 9");
}

TEST(VRELOptionTest, UnknownKindLeavesUnset) {
  VRELOption option;
  RecordingListener const listener;
  EXPECT_EQ(option.SetValue(VRELValue()), VREL_S_OK);
  EXPECT_EQ(KindOf(option), VRELValue::UnknownType);
  EXPECT_EQ(option.SetValue(5), VREL_S_OK);
  EXPECT_EQ(KindOf(option), VRELValue::IntType);
  EXPECT_TRUE(listener.events.empty());
}

struct Assignment {
  Kind kind;
  VRELValue value;
};

std::vector<Assignment> OneAssignmentOfEachKind() {
  return {{VRELValue::UnknownType, VRELValue()},
          {VRELValue::DoubleType, VRELValue(0.25)},
          {VRELValue::IntType, VRELValue(5)},
          {VRELValue::BoolType, VRELValue(true)},
          {VRELValue::StringType, VRELValue(VRELString(L"wood"))}};
}

VRINResult SetTyped(VRELOption& option, Kind kind) {
  switch (kind) {
    case VRELValue::DoubleType:
      return option.SetValue(0.25);
    case VRELValue::IntType:
      return option.SetValue(5);
    case VRELValue::BoolType:
      return option.SetValue(true);
    case VRELValue::StringType:
      return option.SetValue(VRELString(L"wood"));
    default:
      return VREL_UNDETERMINED;
  }
}

std::string Refusal(char const* offered, char const* held) {
  return std::string("VRELOption::SetValue: Specified type (") + offered + ") doesn't match stored type (" + held +
         ") for option 'Probe.Name'.";
}

TEST(VRELOptionTest, SetValueByKind) {
  char const* const names[] = {"unknown", "double", "int", "bool", "string"};
  char const* const taken[] = {"", "double 0.250000", "int 5", "bool true", "string wood"};
  for (int held = 1; held < 5; ++held) {
    for (Assignment const& assignment : OneAssignmentOfEachKind()) {
      for (bool asValue : {true, false}) {
        if (!asValue && assignment.kind == VRELValue::UnknownType) continue;
        SCOPED_TRACE(std::string(names[assignment.kind]) + " to " + names[held] + (asValue ? " as a value" : ""));
        VRELOption option = OneOfEachKind()[static_cast<std::size_t>(held)];
        std::string const before = Default(option);
        RecordingListener const listener;
        VRINResult const result = asValue ? option.SetValue(assignment.value) : SetTyped(option, assignment.kind);
        EXPECT_EQ(Default(option), before);
        if (assignment.kind == held || (held == VRELValue::BoolType && assignment.kind == VRELValue::IntType)) {
          EXPECT_EQ(result, VREL_S_OK);
          EXPECT_EQ(Current(option), taken[held]);
          EXPECT_TRUE(listener.events.empty());
          continue;
        }
        EXPECT_EQ(result, VREL_E_ERROR);
        EXPECT_EQ(Current(option), before);
        EXPECT_EQ(listener.Texts(), Texts{Refusal(names[assignment.kind], names[held])});
        bool const isWarning = !asValue && assignment.kind == VRELValue::IntType;
        EXPECT_EQ(listener.events.at(0).level, isWarning ? warningLevel : errorLevel);
      }
    }
  }
}

TEST(VRELOptionTest, BoolOptionAcceptsInteger) {
  VRELOption option(Probe(), true, false);
  EXPECT_EQ(option.SetValue(0), VREL_S_OK);
  EXPECT_EQ(Current(option), "bool false");
  EXPECT_EQ(option.SetValue(1), VREL_S_OK);
  EXPECT_EQ(Current(option), "bool true");
  EXPECT_EQ(option.SetValue(VRELValue(0)), VREL_S_OK);
  EXPECT_EQ(Current(option), "bool false");
  EXPECT_EQ(option.SetValue(-1), VREL_S_OK);
  EXPECT_EQ(Current(option), "bool true");
  EXPECT_EQ(option.SetValue(VRELValue(0)), VREL_S_OK);
  EXPECT_EQ(option.SetValue(VRELValue(-4)), VREL_S_OK);
  EXPECT_EQ(Current(option), "bool true");
  EXPECT_EQ(Default(option), "bool true");
}

TEST(VRELOptionTest, RefusalWithNonAsciiName) {
  VRELOption option(VRELString(L"100% \u00D6"));
  EXPECT_EQ(option.SetValue(7), VREL_S_OK);
  RecordingListener const listener;
  EXPECT_EQ(option.SetValue(1.0), VREL_E_ERROR);
  EXPECT_EQ(listener.Texts(), Texts{"VRELOption::SetValue: Specified type (double) doesn't match stored type (int) for "
                                    "option '100% \x1A'."});
}

TEST(VRELOptionTest, AssignmentKeepsDefault) {
  VRELOption left(Probe(), 7, false);
  VRELOption right = TextOption(L"steel");
  right.ChangeName(L"right");
  left = right;
  EXPECT_EQ(Default(left), "int 7");
  EXPECT_EQ(Current(left), "string steel");
  EXPECT_EQ(Name(left), "right");
  EXPECT_EQ(KindOf(left), VRELValue::IntType);
  // The type is still that of the default value.
  EXPECT_EQ(left.SetValue(VRELString(L"wood")), VREL_E_ERROR);
  EXPECT_EQ(left.SetValue(8), VREL_S_OK);
  EXPECT_EQ(Current(left), "int 8");
  right = left;
  EXPECT_EQ(Default(right), "string steel");
  EXPECT_EQ(Current(right), "int 8");
}

TEST(VRELOptionTest, AssignmentToUnsetCopiesDefault) {
  VRELOption right(Probe(), 7, true);
  right.SetValue(8);
  VRELOption left(VRELString(L"left"));
  EXPECT_EQ(&(left = right), &left);
  EXPECT_EQ(Default(left), "int 7");
  EXPECT_EQ(Current(left), "int 8");
  EXPECT_EQ(Name(left), "Probe.Name");
  bool isPrivate = false;
  EXPECT_EQ(left.IsPrivate(isPrivate), VREL_S_OK);
  EXPECT_TRUE(isPrivate);

  VRELOption const copy(right);
  EXPECT_EQ(Default(copy), "int 7");
  EXPECT_EQ(Current(copy), "int 8");
  EXPECT_EQ(Name(copy), "Probe.Name");
}

TEST(VRELOptionTest, AssignmentOfUnsetClearsValue) {
  VRELOption left(Probe(), 7, true);
  left = VRELOption(VRELString(L"right"));
  EXPECT_EQ(Default(left), "int 7");
  EXPECT_EQ(Name(left), "right");
  bool isPrivate = true;
  EXPECT_EQ(left.IsPrivate(isPrivate), VREL_S_OK);
  EXPECT_FALSE(isPrivate);
  VRELValue value(3);
  EXPECT_EQ(left.GetValue(value), VREL_S_OK);
  EXPECT_FALSE(value.IsValid());
  int integer = 77;
  EXPECT_EQ(left.GetValue(integer), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(integer, 77);
}

TEST(VRELOptionTest, SelfAssignment) {
  VRELOption option(Probe(), 7, true);
  option.SetValue(8);
  VRELOption const& same = option;
  option = same;
  EXPECT_EQ(Default(option), "int 7");
  EXPECT_EQ(Current(option), "int 8");
  EXPECT_EQ(Name(option), "Probe.Name");
}

TEST(VRELOptionTest, FormEnvVarName) {
  EXPECT_EQ(formEnvVarName(L"Probe.Name").toUtf8(), "VRELProbe.Name");
  EXPECT_EQ(formEnvVarName(L"").toUtf8(), "VREL");
  EXPECT_EQ(formEnvVarName(L"a b=*\u00D6").toUtf8(), "VRELa b=*\xC3\x96");
}

struct EnvironmentReads {
  explicit EnvironmentReads(VRELOption const& option, bool fromEnvironment) {
    results = {option.GetValue(text, fromEnvironment), option.GetValue(flag, fromEnvironment),
               option.GetValue(number, fromEnvironment), option.GetValue(integer, fromEnvironment)};
  }

  VRELString text{L"untouched"};
  bool flag = true;
  double number = 7.5;
  int integer = 77;
  std::vector<VRINResult> results;
};

TEST(VRELOptionTest, EnvironmentOverridesValue) {
  Variable const variable(probeVariable, "2.5");
  // Also for an unset option, and for any kind.
  for (VRELOption const& option : OneOfEachKind()) {
    RecordingListener const listener;
    EnvironmentReads const reads(option, true);
    EXPECT_EQ(reads.results, (std::vector<VRINResult>(4, VREL_S_OK)));
    EXPECT_EQ(reads.text.toUtf8(), "2.5");
    EXPECT_FALSE(reads.flag);
    EXPECT_EQ(reads.number, 2.5);
    EXPECT_EQ(reads.integer, 2);
    EXPECT_EQ(listener.Texts(), (Texts{"Probe.Name value overridden to 2.5 by environment variable",
                                       "Probe.Name value overridden to Off by environment variable",
                                       "VRELProbe.Name value overridden to     2.5 by environment variable",
                                       "VRELProbe.Name value overridden to 2 by environment variable"}));
    for (RecordedEvent const& event : listener.events) EXPECT_EQ(event.level, warningLevel);
  }
}

TEST(VRELOptionTest, EnvironmentSetsBool) {
  Variable const variable(probeVariable, "YES");
  RecordingListener const listener;
  bool flag = false;
  EXPECT_EQ(VRELOption(Probe(), false, false).GetValue(flag, true), VREL_S_OK);
  EXPECT_TRUE(flag);
  EXPECT_EQ(listener.Texts(), Texts{"Probe.Name value overridden to On by environment variable"});
}

TEST(VRELOptionTest, EnvironmentIgnoresInvalidNumber) {
  Variable const variable(probeVariable, "many");
  RecordingListener const listener;
  EnvironmentReads const reads(VRELOption(Probe(), 7, false), true);
  EXPECT_EQ(reads.results, (std::vector<VRINResult>(4, VREL_S_OK)));
  EXPECT_EQ(reads.text.toUtf8(), "many");
  EXPECT_FALSE(reads.flag);
  EXPECT_EQ(reads.number, 7.0);
  EXPECT_EQ(reads.integer, 7);
  EXPECT_EQ(listener.Texts(), (Texts{"Probe.Name value overridden to many by environment variable",
                                     "Probe.Name value overridden to Off by environment variable"}));
  int integer = 77;
  EXPECT_EQ(VRELOption(VRELString(L"Probe.Name")).GetValue(integer, true), VREL_E_OPTION_UNSET);
  EXPECT_EQ(integer, 77);
}

TEST(VRELOptionTest, EnvironmentRequiresFlag) {
  Variable const variable(probeVariable, "2");
  RecordingListener const listener;
  VRELOption const option(Probe(), 7, false);
  EnvironmentReads const reads(option, false);
  EXPECT_EQ(reads.results, (std::vector<VRINResult>(4, VREL_S_OK)));
  EXPECT_EQ(reads.text.toUtf8(), "7");
  EXPECT_TRUE(reads.flag);
  EXPECT_EQ(reads.number, 7.0);
  EXPECT_EQ(reads.integer, 7);
  VRELString text;
  int integer = 0;
  EXPECT_EQ(option.GetValue(text), VREL_S_OK);
  EXPECT_EQ(option.GetValue(integer), VREL_S_OK);
  EXPECT_EQ(text.toUtf8(), "7");
  EXPECT_EQ(integer, 7);
  EXPECT_TRUE(listener.events.empty());
}

TEST(VRELOptionTest, MissingVariableReadsValue) {
  RecordingListener const listener;
  VRELOption option(Probe(), 7, false);
  option.SetValue(8);
  EnvironmentReads const reads(option, true);
  EXPECT_EQ(reads.results, (std::vector<VRINResult>(4, VREL_S_OK)));
  EXPECT_EQ(reads.text.toUtf8(), "8");
  EXPECT_TRUE(reads.flag);
  EXPECT_EQ(reads.number, 8.0);
  EXPECT_EQ(reads.integer, 8);
  EXPECT_TRUE(listener.events.empty());
  // An argument that the plain read leaves unchanged is unchanged.
  bool flag = true;
  EXPECT_EQ(TextOption(L"abc").GetValue(flag, true), VREL_E_FAIL);
  EXPECT_TRUE(flag);
}

TEST(VRELOptionTest, WarningShortensNumbers) {
  struct Row {
    char const* text;
    char const* warned;
  };
  Row const rows[] = {{"1234567", "1.23e+06"}, {"-0.5", "   -0.5"}, {"0", "      0"}, {"123.4", "    123"}};
  for (Row const& row : rows) {
    Variable const variable(probeVariable, row.text);
    RecordingListener const listener;
    double number = 7.5;
    EXPECT_EQ(VRELOption(Probe(), 1.0, false).GetValue(number, true), VREL_S_OK);
    EXPECT_EQ(listener.Texts(),
              Texts{std::string("VRELProbe.Name value overridden to ") + row.warned + " by environment variable"});
  }
}

TEST(VRELOptionTest, WarningTruncatesLongString) {
  std::string const text(5000, 'x');
  Variable const variable(probeVariable, text.c_str());
  RecordingListener const listener;
  VRELString value;
  EXPECT_EQ(VRELOption(Probe(), 1, false).GetValue(value, true), VREL_S_OK);
  EXPECT_EQ(value.toUtf8(), text);
  // 31 bytes are before the string, and a message has at most 1023.
  EXPECT_EQ(listener.Texts(), Texts{"Probe.Name value overridden to " + std::string(1023 - 31, 'x')});
}

std::string StringOf(VRELOption const& option) {
  VRELValue::VRELValueType type = VRELValue::UnknownType;
  VRELString value;
  option.GetValueType(type);
  if (type != VRELValue::StringType) return "no string";
  option.GetValue(value);
  return value.toUtf8();
}

TEST(VRELOptionTest, ConstructorsAcceptStrings) {
  VRELOptionName const name(L"Test.Strings");
  EXPECT_EQ(StringOf(VRELOption(name, "narrow", false)), "narrow");
  EXPECT_EQ(StringOf(VRELOption(name, L"wide \u00D6", false)), "wide \xC3\x96");
  EXPECT_EQ(StringOf(VRELOption(name, std::string("text \xC3\x96"), false)), "text \xC3\x96");
  EXPECT_EQ(StringOf(VRELOption(name, std::string_view("view and more", 4), false)), "view");
  EXPECT_EQ(StringOf(VRELOption(name, static_cast<char const*>(nullptr), false)), "");
  EXPECT_EQ(StringOf(VRELOption(name, static_cast<wchar_t const*>(nullptr), false)), "");
}

TEST(VRELOptionTest, SetValueAcceptsStrings) {
  VRELOption option(VRELString(L"Test.Strings"));
  EXPECT_EQ(option.SetValue("narrow"), VREL_S_OK);
  EXPECT_EQ(StringOf(option), "narrow");
  EXPECT_EQ(option.SetValue(L"wide \u00D6"), VREL_S_OK);
  EXPECT_EQ(StringOf(option), "wide \xC3\x96");
  EXPECT_EQ(option.SetValue(std::string("text \xC3\x96")), VREL_S_OK);
  EXPECT_EQ(StringOf(option), "text \xC3\x96");
  EXPECT_EQ(option.SetValue(std::string_view("view and more", 4)), VREL_S_OK);
  EXPECT_EQ(StringOf(option), "view");
  EXPECT_EQ(option.SetValue(static_cast<char const*>(nullptr)), VREL_S_OK);
  EXPECT_EQ(StringOf(option), "");
  // A string is refused by an option of another kind.
  VRELOption flag(VRELOptionName(VRELString(L"Test.Flag")), true, false);
  EXPECT_EQ(flag.SetValue("text"), VREL_E_ERROR);
}

}  // namespace
