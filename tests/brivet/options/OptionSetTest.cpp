#include "OptionSet.h"

#include <gtest/gtest.h>

#include <memory>

#include "RecordingListener.h"
#include "ScratchDirectory.h"
#include "VRELErrorTracker.h"
#include "VRELOption.h"

namespace {

using Texts = std::vector<std::string>;

class OptionSetTest : public testing::Test {
 protected:
  OptionSetTest() {
    VRELErrorTracker::Initialize();
    tracker.reset(VRELErrorTracker::GetInstance());
  }

  VRINResult Set(std::string const& text) { return options.Add({OptionSource::Setting, text}); }
  VRINResult Read(std::string const& bytes) {
    return options.Add({OptionSource::File, folder.Write("base.cfg", bytes)});
  }

  // Returns the value of the option that applies to a name, or "(none)".
  std::string ValueOf(wchar_t const* name) const {
    VRELOption* option = nullptr;
    VRELString value(L"(none)");
    if (options.Store().GetOption(name, option).IsSuccess()) option->GetValue(value);
    return value.toUtf8();
  }

  Texts Warnings() const {
    RecordingListener const recorder;
    options.ReportWarnings();
    return recorder.Texts();
  }

  std::unique_ptr<VRELErrorTracker> tracker;
  RecordingListener listener;
  ScratchDirectory folder;
  OptionSet options;
};

}  // namespace

TEST_F(OptionSetTest, IsEmptyInitially) {
  EXPECT_EQ(options.Store().Size(), 0);
  EXPECT_TRUE(options.Sources().empty());
  EXPECT_TRUE(options.Warnings().empty());
  EXPECT_EQ(options.UnknownCount(), 0);
}

TEST_F(OptionSetTest, LaterOptionsReplaceEarlierOnes) {
  EXPECT_EQ(Set("SewTolerance=1"), VREL_S_OK);
  EXPECT_EQ(ValueOf(L"SewTolerance"), "1");
  EXPECT_EQ(Read("SewTolerance=2\nAuthorName=\"x \"\nsewtolerance=3\n"), VREL_S_OK);
  EXPECT_EQ(ValueOf(L"SewTolerance"), "3");
  EXPECT_EQ(ValueOf(L"AuthorName"), "x ");
  EXPECT_EQ(Set("SewTolerance=4"), VREL_S_OK);
  EXPECT_EQ(Set("*.*.Reader.SewTolerance=5"), VREL_S_OK);
  EXPECT_EQ(ValueOf(L"SewTolerance"), "4");
  EXPECT_EQ(ValueOf(L"Step.BRep.Reader.SewTolerance"), "5");
  EXPECT_EQ(ValueOf(L"Step.BRep.Writer.SewTolerance"), "4");
  ASSERT_EQ(options.Sources().size(), 4U);
  EXPECT_EQ(options.Sources()[0].Words(), "-set SewTolerance=1");
  EXPECT_EQ(options.Sources()[1].Words(), "-options " + folder.Path("base.cfg"));
  EXPECT_EQ(options.Sources()[3].Words(), "-set *.*.Reader.SewTolerance=5");
  EXPECT_EQ(options.Store().Size(), 6);
  EXPECT_EQ(Warnings(), Texts{});
  EXPECT_EQ(options.UnknownCount(), 0);
  EXPECT_TRUE(listener.events.empty());
}

TEST_F(OptionSetTest, DetectsTypeOfValue) {
  struct Row {
    char const* text;
    VRELValue::VRELValueType kind;
    char const* value;
  };
  Row const rows[] = {{"Level=1", VRELValue::IntType, "1"},
                      {"Level=-0x1F", VRELValue::IntType, "-31"},
                      {"Level=1.5e2", VRELValue::DoubleType, "150.000000"},
                      {"Level=off", VRELValue::BoolType, "false"},
                      {"Level=\"off\"", VRELValue::StringType, "off"},
                      {"Level=\"\"", VRELValue::StringType, ""},
                      {"Level = a = b, c ", VRELValue::StringType, "a = b, c"}};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.text);
    OptionSet set;
    EXPECT_EQ(set.Add({OptionSource::Setting, row.text}), VREL_S_OK);
    VRELOption* option = nullptr;
    ASSERT_EQ(set.Store().GetOption(L"Level", option), VREL_S_OK);
    VRELValue::VRELValueType kind = VRELValue::UnknownType;
    option->GetValueType(kind);
    EXPECT_EQ(kind, row.kind);
    VRELString value;
    EXPECT_EQ(option->GetValue(value), VREL_S_OK);
    EXPECT_EQ(value.toUtf8(), row.value);
  }
}

TEST_F(OptionSetTest, StoresUnknownNamesWithWarning) {
  EXPECT_EQ(Set("SewTolerence=1"), VREL_S_OK);
  EXPECT_EQ(Set("Foo=a=b"), VREL_S_OK);
  EXPECT_EQ(Read("\nConvertAtributes=On\nHealing=On\n/XStep/Import/Mode/Solid/Tim=1\n"), VREL_S_OK);
  EXPECT_EQ(ValueOf(L"SewTolerence"), "1");
  EXPECT_EQ(ValueOf(L"ConvertAtributes"), "true");
  std::string const path = folder.Path("base.cfg");
  EXPECT_EQ(Warnings(),
            (Texts{"-set SewTolerence=1: unknown option 'SewTolerence'; did you mean 'SewTolerance'?",
                   "-set Foo=a=b: unknown option 'Foo'",
                   path + ":2: warning: unknown option 'ConvertAtributes'; did you mean 'ConvertAttributes' or "
                          "'ConvertEdgeAttributes'?",
                   path + ":4: warning: unknown option '/XStep/Import/Mode/Solid/Tim'; did you mean "
                          "'/XStep/Import/Mode/Solid/Trim', '/XStep/Import/Mode/Solid/Wire' or "
                          "'/XJt/Import/Mode/Solid/Trim'?"}));
  EXPECT_EQ(options.UnknownCount(), 4);
}

TEST_F(OptionSetTest, ShortensLongNames) {
  EXPECT_EQ(Set(std::string(100, 'x') + "=1"), VREL_S_OK);
  EXPECT_EQ(Set(std::string(101, 'x') + "=1"), VREL_S_OK);
  std::string const begin = "unknown option '" + std::string(100, 'x');
  EXPECT_EQ(options.Warnings()[0].text, begin + "'");
  EXPECT_EQ(options.Warnings()[1].text, begin + "...'");
}

TEST_F(OptionSetTest, LimitsWarningsOfFileToHundred) {
  std::string bytes;
  for (int i = 0; i < 102; ++i) bytes += "SewTolerence=1\n";
  EXPECT_EQ(Read(bytes), VREL_S_OK);
  Texts const warnings = Warnings();
  std::string const path = folder.Path("base.cfg");
  ASSERT_EQ(warnings.size(), 101U);
  EXPECT_EQ(warnings[99], path + ":100: warning: unknown option 'SewTolerence'; did you mean 'SewTolerance'?");
  EXPECT_EQ(warnings[100], path + ": warning: 2 more warnings were not shown");
  EXPECT_EQ(options.UnknownCount(), 102);
  // Those of another source are shown, without suggestions.
  EXPECT_EQ(Set("SewTolerence=1"), VREL_S_OK);
  EXPECT_EQ(Read(bytes.substr(0, bytes.size() / 102) + "a..b=1\n"), VREL_S_OK);
  Texts const more = Warnings();
  ASSERT_EQ(more.size(), 104U);
  EXPECT_EQ(more[101], "-set SewTolerence=1: unknown option 'SewTolerence'");
  EXPECT_EQ(more[102], path + ":1: warning: unknown option 'SewTolerence'");
}

TEST_F(OptionSetTest, LimitsErrorsOfFileToHundred) {
  std::string invalid;
  std::string malformed;
  for (int i = 0; i < 101; ++i) {
    invalid += "FileLineLength=abc\n";
    malformed += "x\n";
  }
  std::string const last = folder.Path("base.cfg") + ": error: 1 more error was not shown";
  for (std::string const& bytes : {invalid, malformed}) {
    listener.events.clear();
    EXPECT_EQ(Read(bytes), VREL_E_FAIL);
    Texts const errors = listener.Texts();
    ASSERT_EQ(errors.size(), 101U);
    EXPECT_EQ(errors.back(), last);
  }
}

// The store would miss options in its enumerations.
TEST_F(OptionSetTest, SkipsNamesWithEmptyToken) {
  EXPECT_EQ(Read("A..SewTolerance=1\nSewTolerance=2\n.=3\nHealing.=4\n"), VREL_S_OK);
  std::string const path = folder.Path("base.cfg");
  std::string const end = " has an empty part between dots; it is ignored";
  EXPECT_EQ(Warnings(),
            (Texts{path + ":1: warning: option name 'A..SewTolerance'" + end,
                   path + ":3: warning: option name '.'" + end, path + ":4: warning: option name 'Healing.'" + end}));
  EXPECT_EQ(options.Store().Size(), 1);
  VRELOption* option = nullptr;
  options.Store().InitEnumeration();
  EXPECT_EQ(options.Store().GetNext(option), VREL_S_OK);
  EXPECT_EQ(options.Store().GetNext(option), VREL_E_FAIL);
  EXPECT_EQ(options.UnknownCount(), 0);
}

TEST_F(OptionSetTest, WarnsAboutKeysInSections) {
  EXPECT_EQ(Read("Healing=On\n[Step]\n\nSewTolerance=1\nAuthorName=x\n"), VREL_S_OK);
  EXPECT_EQ(Warnings(), Texts{folder.Path("base.cfg") + ":4: warning: options below a section header are ignored: 2"});
  EXPECT_EQ(ValueOf(L"SewTolerance"), "(none)");
}

TEST_F(OptionSetTest, InvalidFileAddsNoOption) {
  EXPECT_EQ(Read("SewTolerance=1\nx\n[y\n"), VREL_E_FAIL);
  std::string const path = folder.Path("base.cfg");
  EXPECT_EQ(listener.Texts(), (Texts{path + ":2: error: Incorrect syntax: line 2:x *** \"key=value\" expected",
                                     path + ":3: error: Incorrect syntax: line 3:[y *** \"[section name]' expected."}));
  EXPECT_EQ(options.Store().Size(), 0);
  EXPECT_TRUE(options.Sources().empty());
}

TEST_F(OptionSetTest, ReportsUnreadableFile) {
  EXPECT_EQ(options.Add({OptionSource::File, folder.Path("missing")}), VREL_E_FILE_NOT_FOUND);
  EXPECT_EQ(options.Add({OptionSource::File, folder.Path()}), VREL_E_FILE_OPEN);
  EXPECT_EQ(listener.Texts(), (Texts{"cannot open '" + folder.Path("missing") + "': No such file or directory",
                                     "cannot read '" + folder.Path() + "': Is a directory"}));
  EXPECT_TRUE(options.Sources().empty());
}

TEST_F(OptionSetTest, RefusesInvalidSetting) {
  for (char const* text : {"", "a", "=1", "a=", " = ", "a..b=1", ".a=1"}) {
    SCOPED_TRACE(text);
    listener.events.clear();
    EXPECT_EQ(Set(text), VREL_E_INVALID_ARGUMENT);
    EXPECT_EQ(listener.Texts(), Texts{"-set " + std::string(text) + ": not of the form NAME=VALUE"});
  }
  EXPECT_TRUE(options.Sources().empty());
}

TEST_F(OptionSetTest, DumpEscapesControlCharacters) {
  EXPECT_EQ(Set("AuthorName=a\nError : forged\x1B"), VREL_S_OK);
  options.Dump();
  EXPECT_EQ(listener.Texts(), Texts{"AuthorName = a<U+000A>Error : forged<U+001B>"});
  EXPECT_EQ(ValueOf(L"AuthorName"), "a\nError : forged\x1B");
}

TEST_F(OptionSetTest, RefusesValuesOfOtherTypes) {
  EXPECT_EQ(Read("AuthorName = me\nFileLineLength = abc\n"), VREL_E_FAIL);
  EXPECT_EQ(options.Add({OptionSource::Setting, "Step.*.Writer.FileLineLength=-1"}), VREL_E_FAIL);
  EXPECT_EQ(options.Add({OptionSource::Setting, "*.*.Reader.FileLineLength=abc"}), VREL_S_OK);
  EXPECT_EQ(options.Add({OptionSource::Setting, "Html.*.Writer.FileLineLength=abc"}), VREL_S_OK);
  ASSERT_GE(listener.events.size(), 2U);
  EXPECT_EQ(listener.events[0].text,
            folder.Path() +
                "/base.cfg:2: error: option 'FileLineLength': expected a whole number from 0 to "
                "2147483647, found 'abc'");
  EXPECT_EQ(listener.events[1].text,
            "-set Step.*.Writer.FileLineLength=-1: option 'Step.*.Writer.FileLineLength': "
            "expected a whole number from 0 to 2147483647, found '-1'");
  EXPECT_EQ(options.Check("step", "step"), VREL_S_OK);
}
