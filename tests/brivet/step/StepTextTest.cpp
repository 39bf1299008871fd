#include "StepText.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Row {
  char const* raw;
  char const* text;  // UTF-8
};

void ExpectAll(std::initializer_list<Row> rows, bool escaped) {
  for (Row const& row : rows) {
    SCOPED_TRACE(row.raw);
    StepText::Decoded const decoded = StepText().Decode(row.raw);
    EXPECT_EQ(decoded.utf8, row.text);
    EXPECT_EQ(decoded.escaped, escaped);
  }
}

}  // namespace

TEST(StepTextTest, PlainStringIsUnchanged) {
  ExpectAll({{"", ""},
             {"plain", "plain"},
             {"it's", "it's"},
             {"a\\b", "a\\b"},
             {"C:\\TEMP\\", "C:\\TEMP\\"},
             {"\\", "\\"},
             // A lone \S\ has no character to change.
             {"C:\\S\\", "C:\\S\\"},
             {"\\s\\A", "\\s\\A"},
             {"\\S\\\x7F", "\\S\\\x7F"},
             {"\\S\\\xC3\xA4", "\\S\\\xC3\xA4"},
             {"m\xC3\xBCller", "m\xC3\xBCller"},
             // U+FFFD in the file itself does not change the encoding of the string.
             {"\xC3\xBC \xEF\xBF\xBD", "\xC3\xBC \xEF\xBF\xBD"}},
            false);
}

TEST(StepTextTest, DecodesLatin1) {
  ExpectAll({{"\\S\\A", "\xC3\x81"},
             {"f\\S\\|r", "f\xC3\xBCr"},
             {"Gr\\S\\v\\S\\_e",
              "Gr\xC3\xB6\xC3\x9F"
              "e"},
             // The character after \S\ may be a backslash or an apostrophe.
             {"\\S\\\\berholung",
              "\xC3\x9C"
              "berholung"},
             {"\\S\\' 5", "\xC2\xA7 5"},
             {"\\S\\ ", "\xC2\xA0"}},
            true);
}

TEST(StepTextTest, DecodesUtf16) {
  ExpectAll({{"\\X2\\30D630EC30F330C9\\X0\\ R1", "\xE3\x83\x96\xE3\x83\xAC\xE3\x83\xB3\xE3\x83\x89 R1"},
             {"\\X2\\00e9\\X0\\", "\xC3\xA9"},
             {"ab\\X2\\00E9\\X0\\cd\\S\\A",
              "ab\xC3\xA9"
              "cd\xC3\x81"},
             {"\\X2\\D83DDD29\\X0\\", "\xF0\x9F\x94\xA9"},
             {"\\X2\\D83D\\X0\\\\X2\\DD29\\X0\\", "\xF0\x9F\x94\xA9"},
             // A stray end does not affect the escapes after it.
             {"\\X0\\ \\X2\\0041\\X0\\", "\\X0\\ A"}},
            true);
}

TEST(StepTextTest, DecodesSingleBytesAndUtf32) {
  ExpectAll({{"caf\\X\\E9", "caf\xC3\xA9"},
             {"\\X\\e9\\X\\FF0",
              "\xC3\xA9\xC3\xBF"
              "0"},
             {"\\X\\0A", "\n"},
             {"\\X4\\0001F529\\X0\\", "\xF0\x9F\x94\xA9"},
             {"\\X4\\000000E9000030D6\\X0\\x", "\xC3\xA9\xE3\x83\x96x"},
             {"\\X4\\0000FFFD\\X0\\", "\xEF\xBF\xBD"},
             {"\\X4\\0010FFFF\\X0\\", "\xF4\x8F\xBF\xBF"},
             {"\\X4\\00010000\\X0\\", "\xF0\x90\x80\x80"},
             // No characters.
             {"\\X4\\00110000\\X0\\", "\xEF\xBF\xBD"},
             {"\\X4\\0000D83D0000DD29\\X0\\", "\xEF\xBF\xBD\xEF\xBF\xBD"},
             {"\\X2\\D83D\\X0\\\\X4\\0000DD29\\X0\\", "\xEF\xBF\xBD\xEF\xBF\xBD"},
             {"\\X4\\FFFFFFFF\\X0\\", "\xEF\xBF\xBD"}},
            true);
}

TEST(StepTextTest, ReducesBackslashes) {
  ExpectAll({{"C:\\\\TEMP", "C:\\TEMP"},
             {"\\\\S\\\\A", "\\S\\A"},
             {"\\\\S\\A", "\\S\\A"},
             {"\\\\X2\\\\00E9\\\\X0\\\\", "\\X2\\00E9\\X0\\"},
             {"\\\\\\S\\A", "\\\xC3\x81"},
             {"\\\\\\\\", "\\\\"},
             {"a\\\\\\X2\\00E9\\X0\\\\\\b", "a\\\xC3\xA9\\b"}},
            true);
}

TEST(StepTextTest, KeepsInvalidEscapes) {
  ExpectAll({{"\\PA\\x", "\\PA\\x"},
             {"\\X4\\0001F52\\X0\\", "\\X4\\0001F52\\X0\\"},
             {"\\X4\\0001F529", "\\X4\\0001F529"},
             // The end of a page selection and the begin of the next escape are no doubled backslash.
             {"\\PA\\\\S\\A", "\\PA\\\xC3\x81"},
             // Nor are the end of an escape that is not open and a backslash after it.
             {"\\X0\\", "\\X0\\"},
             {"\\X0\\\\", "\\X0\\\\"},
             {"\\X2\\\\X0\\", "\\X2\\\\X0\\"},
             {"\\X2\\00E\\X0\\", "\\X2\\00E\\X0\\"},
             {"\\X2\\00E9", "\\X2\\00E9"},
             {"\\X2\\00G9\\X0\\", "\\X2\\00G9\\X0\\"},
             {"\\X2\\00E9\\S\\A", "\\X2\\00E9\xC3\x81"}},
            true);
}

// Cost: linear time, no deep stack.
TEST(StepTextTest, TakesManyEscapes) {
  constexpr std::size_t kCount = 100000;
  auto const repeat = [](std::string const& part) {
    std::string all;
    for (std::size_t i = 0; i < kCount; ++i) all += part;
    return all;
  };
  StepText text;
  EXPECT_EQ(text.Decode(repeat("\\S\\A")).utf8, repeat("\xC3\x81"));
  EXPECT_EQ(text.Decode(repeat("\\\\")).utf8, repeat("\\"));
  EXPECT_EQ(text.Decode(repeat("\\X2\\00E9")).utf8, repeat("\\X2\\00E9"));
  EXPECT_EQ(text.Decode("\\X2\\" + repeat("00E9") + "\\X0\\").utf8, repeat("\xC3\xA9"));
}

TEST(StepTextTest, DecodesNul) {
  StepText text;
  EXPECT_EQ(text.Decode("visible\\X\\00 hidden tail").utf8, std::string("visible\0 hidden tail", 20));
  EXPECT_EQ(text.Decode("a\\X2\\00000041\\X0\\").utf8, std::string("a\0A", 3));
  EXPECT_EQ(text.Decode("a\\X4\\00000000\\X0\\b").utf8, std::string("a\0b", 3));
  EXPECT_EQ(text.Decode(std::string_view("a\0\\S\\A", 6)).utf8, std::string("a\0\xC3\x81", 4));
}

// The tests run in the C locale, whose encoding is ASCII.
TEST(StepTextTest, InvalidUtf8IsLatin1) {
  StepText text;
  EXPECT_EQ(text.UsedEncodings(), "");
  EXPECT_EQ(text.Decode("x\xFFy\\S\\A").utf8, "x\xC3\xBFy\xC3\x81");
  EXPECT_EQ(text.Decode("m\xC3\xBCller").utf8, "m\xC3\xBCller");
  EXPECT_EQ(text.Decode("M\xC3\xBCller").utf8, "M\xC3\xBCller");
  EXPECT_EQ(text.Decode("plain").utf8, "plain");
  EXPECT_EQ(text.UsedEncodings(), "UTF-8 (2 strings), ISO-8859-1 (1 string)");
}

TEST(StepTextTest, DecodesInGivenEncoding) {
  StepText text;
  EXPECT_FALSE(text.SetEncoding("no-such-encoding"));
  ASSERT_TRUE(text.SetEncoding("Shift_JIS"));
  // The second byte of this character is a backslash in ASCII.
  EXPECT_EQ(text.Decode("\x95\x5C\\X\\E9").utf8, "\xE8\xA1\xA8\xC3\xA9");
  EXPECT_EQ(text.UsedEncodings(), "Shift_JIS (1 string)");
  ASSERT_TRUE(text.SetEncoding("windows-1252"));
  EXPECT_EQ(text.Decode("5 \x80").utf8, "5 \xE2\x82\xAC");
  ASSERT_TRUE(text.SetEncoding(""));
  EXPECT_EQ(text.Decode("\x80").utf8, "\xC2\x80");
}
