#include "EscapedText.h"

#include <gtest/gtest.h>

TEST(EscapedTextTest, ControlsBecomeCodes) {
  struct Row {
    std::string text;
    std::string escaped;
  };
  Row const rows[] = {{"", ""},
                      {"plain \xC3\xA4 \xE3\x83\x96 \xF0\x9F\x94\xA9", "plain \xC3\xA4 \xE3\x83\x96 \xF0\x9F\x94\xA9"},
                      {std::string("\0\t\n\x1F ~\x7F", 7), "<U+0000><U+0009><U+000A><U+001F> ~<U+007F>"},
                      {"\xC2\x80\xC2\x9F\xC2\xA0", "<U+0080><U+009F>\xC2\xA0"},
                      {"\xE2\x80\xA7\xE2\x80\xA8\xE2\x80\xA9\xE2\x80\xAA", "\xE2\x80\xA7<U+2028><U+2029><U+202A>"},
                      {"\xE2\x80\xAE\xE2\x80\xAF", "<U+202E>\xE2\x80\xAF"},
                      {"\xD8\x9B\xD8\x9C\xD8\x9D", "\xD8\x9B<U+061C>\xD8\x9D"},
                      {"\xE2\x80\x8D\xE2\x80\x8E\xE2\x80\x8F\xE2\x80\x90", "\xE2\x80\x8D<U+200E><U+200F>\xE2\x80\x90"},
                      {"\xE2\x81\xA5\xE2\x81\xA6\xE2\x81\xA9\xE2\x81\xAA", "\xE2\x81\xA5<U+2066><U+2069>\xE2\x81\xAA"},
                      // Invalid UTF-8: only what is a control character in ISO 8859-1.
                      {"\xC2", "\xC2"},
                      {"\xE2\x80", "\xE2<U+0080>"},
                      {"\x9B"
                       "31m\xE4",
                       "<U+009B>31m\xE4"}};
  for (Row const& row : rows) {
    std::string escaped = "before ";
    AppendEscapingControls(escaped, row.text);
    EXPECT_EQ(escaped, std::string("before ") + row.escaped);
  }
}
