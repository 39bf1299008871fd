#include "EscapedText.h"

#include <gtest/gtest.h>

TEST(EscapedTextTest, ShowsControlCharactersByTheirCodes) {
  struct Row {
    std::string text;
    char const* shown;
  };
  Row const rows[] = {{"", ""},
                      {"plain \xC3\xA4 \xE3\x83\x96 \xF0\x9F\x94\xA9", "plain \xC3\xA4 \xE3\x83\x96 \xF0\x9F\x94\xA9"},
                      {std::string("\0\t\n\x1F ~\x7F", 7), "<U+0000><U+0009><U+000A><U+001F> ~<U+007F>"},
                      {"\xC2\x80\xC2\x9F\xC2\xA0", "<U+0080><U+009F>\xC2\xA0"},
                      {"\xE2\x80\xA7\xE2\x80\xA8\xE2\x80\xA9\xE2\x80\xAA", "\xE2\x80\xA7<U+2028><U+2029>\xE2\x80\xAA"},
                      {"\xC2", "\xC2"},
                      {"\xE2\x80", "\xE2\x80"}};
  for (Row const& row : rows) {
    std::string shown = "before ";
    AppendEscapingControls(shown, row.text);
    EXPECT_EQ(shown, std::string("before ") + row.shown);
  }
}
