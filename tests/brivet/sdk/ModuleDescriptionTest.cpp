#include "ModuleDescription.h"

#include <gtest/gtest.h>

namespace {

ModuleDescription Valid() {
  ModuleDescription module;
  module.name = "BrivetStl";
  module.version = "1.0";
  FormatDescription format;
  format.name = "stl";
  format.title = "STL";
  format.extensions = {".stl"};
  format.reads = true;
  module.formats = {format};
  return module;
}

OptionDescription Option(OptionDescription::Type type) {
  OptionDescription option;
  option.name = "Unit";
  option.type = type;
  option.help = "help";
  return option;
}

std::string FaultOf(void (*change)(ModuleDescription&)) {
  ModuleDescription module = Valid();
  change(module);
  return module.InvalidReason();
}

}  // namespace

TEST(ModuleDescriptionTest, AcceptsValidDescription) {
  EXPECT_EQ(Valid().InvalidReason(), "");
}

TEST(ModuleDescriptionTest, NamesBrokenRule) {
  EXPECT_EQ(FaultOf([](ModuleDescription& module) { module.name = "../x"; }),
            "the name of the module is not of at most 55 letters, digits, '-' and '_'");
  EXPECT_EQ(FaultOf([](ModuleDescription& module) { module.version = ""; }),
            "the version of the module is not a word of at most 32 bytes");
  EXPECT_EQ(FaultOf([](ModuleDescription& module) { module.formats.clear(); }), "the module has no formats");
  EXPECT_EQ(FaultOf([](ModuleDescription& module) { module.formats.push_back(module.formats[0]); }),
            "two formats have the name 'stl'");
  EXPECT_EQ(FaultOf([](ModuleDescription& module) { module.formats[0].reads = false; }),
            "format 'stl': neither read nor written");
  EXPECT_EQ(FaultOf([](ModuleDescription& module) { module.formats[0].extensions = {".STL"}; }),
            "format 'stl': invalid extension '.STL'");
  EXPECT_EQ(FaultOf([](ModuleDescription& module) { module.formats[0].extensions = {".gz"}; }),
            "format 'stl': invalid extension '.gz'");
  EXPECT_EQ(FaultOf([](ModuleDescription& module) { module.formats[0].title = "a\nb"; }),
            "format 'stl': the title is not one line of at most 200 bytes");
  EXPECT_EQ(
      FaultOf([](ModuleDescription& module) { module.formats[0].readerOptions = {Option(OptionDescription::Choice)}; }),
      "format 'stl': option 'Unit': no choices");
  EXPECT_EQ(FaultOf([](ModuleDescription& module) {
              OptionDescription option = Option(OptionDescription::Int);
              option.defaultValue = "x";
              module.formats[0].writerOptions = {option};
            }),
            "format 'stl': option 'Unit': default: expected a whole number, found 'x'");
}

TEST(ModuleDescriptionTest, ChecksValuesByType) {
  OptionDescription const boolean = Option(OptionDescription::Bool);
  for (char const* value : {"On", "off", "YES", "no", "True", "\"false\""}) EXPECT_EQ(boolean.InvalidReason(value), "");
  for (char const* value : {"", "1", "onn"}) EXPECT_NE(boolean.InvalidReason(value), "") << value;
  OptionDescription integer = Option(OptionDescription::Int);
  for (char const* value : {"0", "-2147483648", "0x7FFFFFFF", "+5"})
    EXPECT_EQ(integer.InvalidReason(value), "") << value;
  for (char const* value : {"", "-", "1.", "2147483648", "99999999999999999999", "0x", " 1"}) {
    EXPECT_NE(integer.InvalidReason(value), "") << value;
  }
  integer.minimum = "1";
  integer.maximum = "9";
  EXPECT_EQ(integer.InvalidReason("9"), "");
  EXPECT_EQ(integer.InvalidReason("10"), "expected a whole number from 1 to 9, found '10'");
  OptionDescription real = Option(OptionDescription::Double);
  real.minimum = "0.5";
  for (char const* value : {"0.5", "1", "1e3"}) EXPECT_EQ(real.InvalidReason(value), "") << value;
  for (char const* value : {"nan", "inf", "1e999", "0.4", "1,5", "."})
    EXPECT_NE(real.InvalidReason(value), "") << value;
  OptionDescription choice = Option(OptionDescription::Choice);
  choice.choices = {"mm", "inch"};
  EXPECT_EQ(choice.InvalidReason("INCH"), "");
  EXPECT_EQ(choice.InvalidReason("yard"), "expected one of mm, inch, found 'yard'");
  EXPECT_EQ(Option(OptionDescription::String).InvalidReason(""), "");
}

TEST(ModuleDescriptionTest, RecognisesSignatures) {
  Signature const signature{2, "ab"};
  EXPECT_TRUE(signature.Matches("xxab"));
  for (char const* begin : {"", "xx", "xxa", "abab "})
    EXPECT_EQ(signature.Matches(begin), std::string(begin) == "abab ");
  EXPECT_FALSE((Signature{-1, "a"}.Matches("a")));
}
