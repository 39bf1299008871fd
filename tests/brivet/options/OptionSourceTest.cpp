#include "OptionSource.h"

#include <gtest/gtest.h>

TEST(OptionSourceTest, IsShownAsOnTheCommandLine) {
  OptionSource const file{OptionSource::File, "base.cfg"};
  OptionSource const setting{OptionSource::Setting, "Assembly=On"};
  EXPECT_EQ(file.Words(), "-options base.cfg");
  EXPECT_EQ(setting.Words(), "-set Assembly=On");
}

TEST(OptionSourceTest, CutsASettingAtItsFirstEqualsSign) {
  struct Row {
    char const* text;
    char const* name;
    char const* value;
  };
  Row const rows[] = {
      {"Assembly=On", "Assembly", "On"},
      {"a=b=c", "a", "b=c"},
      {"a==", "a", "="},
      {" a b \t=\r\n c d ", "a b", "c d"},
      {"a:b=c,,d", "a:b", "c,,d"},
      {"=c", "", "c"},
      {"a=", "a", ""},
      {"=", "", ""},
      {" = ", "", ""},
      {"a=\" b \"", "a", "\" b \""},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.text);
    std::string name = "before";
    std::string value = "before";
    EXPECT_TRUE(SplitSetting(row.text, name, value));
    EXPECT_EQ(name, row.name);
    EXPECT_EQ(value, row.value);
  }
}

TEST(OptionSourceTest, CutsNoTextWithoutAnEqualsSign) {
  for (char const* text : {"", "a", "a:b", " "}) {
    std::string name = "before";
    std::string value = "too";
    EXPECT_FALSE(SplitSetting(text, name, value)) << text;
    EXPECT_EQ(name, "before");
    EXPECT_EQ(value, "too");
  }
}
