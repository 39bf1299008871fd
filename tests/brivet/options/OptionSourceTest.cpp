#include "OptionSource.h"

#include <gtest/gtest.h>

TEST(OptionSourceTest, WordsAreThoseOfCommandLine) {
  OptionSource const file{OptionSource::File, "base.cfg"};
  OptionSource const setting{OptionSource::Setting, "Assembly=On"};
  EXPECT_EQ(file.Words(), "-options base.cfg");
  EXPECT_EQ(setting.Words(), "-set Assembly=On");
}

TEST(OptionSourceTest, SplitSettingUsesFirstEqualsSign) {
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

TEST(OptionSourceTest, SplitSettingRequiresEqualsSign) {
  for (char const* text : {"", "a", "a:b", " "}) {
    std::string name = "before";
    std::string value = "too";
    EXPECT_FALSE(SplitSetting(text, name, value)) << text;
    EXPECT_EQ(name, "before");
    EXPECT_EQ(value, "too");
  }
}

TEST(OptionSourceTest, FindsEmptyTokens) {
  for (char const* name : {"", ".", "a.", ".a", "a..b", "..", "a.b.", "a.b..c.d"}) {
    EXPECT_TRUE(HasEmptyToken(name)) << name;
  }
  for (char const* name : {"a", "a.b", "*", "*.*.a", "a b", " . "}) EXPECT_FALSE(HasEmptyToken(name)) << name;
}
