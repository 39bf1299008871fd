#include "ValidUtf8.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Row {
  char const* text;
  char const* valid;
};

constexpr Row kRows[] = {{"", ""},
                         {"plain text of more than eight bytes", "plain text of more than eight bytes"},
                         {"12345678\xC3\xA4 12345678", "12345678\xC3\xA4 12345678"},
                         {"\xF0\x9F\x94\xA9", "\xF0\x9F\x94\xA9"},
                         {"\x80", "\xEF\xBF\xBD"},
                         {"a\xFFz", "a\xEF\xBF\xBDz"},
                         {"12345678\xE3\x83z", "12345678\xEF\xBF\xBD\xEF\xBF\xBDz"},
                         {"\xED\xA0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
                         {"\xC0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD"},
                         {"end\xC3", "end\xEF\xBF\xBD"}};

}  // namespace

TEST(ValidUtf8Test, ReplacesInvalidBytes) {
  for (Row const& row : kRows) {
    SCOPED_TRACE(row.valid);
    std::string text = "<";
    AppendValidUtf8(text, row.text);
    EXPECT_EQ(text, std::string("<") + row.valid);
    EXPECT_EQ(ValidUtf8(row.text), row.valid);
    EXPECT_EQ(IsValidUtf8(row.text), std::string(row.text) == row.valid);
  }
}
