#include "ValidUtf8.h"

#include <gtest/gtest.h>

#include <string>

TEST(ValidUtf8Test, ReplacesInvalidBytes) {
  struct Row {
    std::string text;
    std::string expected;
  };
  std::string const replacement = "\xEF\xBF\xBD";
  for (Row const& row :
       {Row{"", ""}, Row{"a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"},
        Row{"a\xFF", "a" + replacement}, Row{"\xC3", replacement},
        Row{"\xC0\x80", replacement + replacement},                    // overlong
        Row{"\xED\xA0\x80", replacement + replacement + replacement},  // surrogate
        Row{"\x80x", replacement + "x"}}) {
    EXPECT_EQ(ValidUtf8(row.text), row.expected);
  }
}
