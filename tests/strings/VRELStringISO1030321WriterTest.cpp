#include "VRELStringISO1030321Writer.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <type_traits>
#include <utility>

#include "VRELStringISO1030321Reader.h"

namespace {

TEST(VRELStringISO1030321WriterTest, DerivesFromConverter) {
  EXPECT_TRUE((std::is_convertible_v<VRELStringISO1030321Writer*, VRELStringISO1030321Converter*>));
  EXPECT_EQ(sizeof(VRELStringISO1030321Writer), sizeof(VRELStringISO1030321Converter));
}

TEST(VRELStringISO1030321WriterTest, Encodes) {
  struct Row {
    wchar_t const* text;
    char const* encoded;
  };
  Row const rows[] = {
      {L"a", "a"},
      {L"plain text", "plain text"},
      {L"\u00E9", "\\X2\\00E9\\X0\\"},
      {L"ab\u00E9\u00E8cd", "ab\\X2\\00E900E8\\X0\\cd"},
      {L"\u00E9a\u00E8", "\\X2\\00E9\\X0\\a\\X2\\00E8\\X0\\"},
      {L"\U0001F600", "\\X2\\D83DDE00\\X0\\"},
      {L"\u00FCber\u20AC", "\\X2\\00FC\\X0\\ber\\X2\\20AC\\X0\\"},
      {L"\x7F\u0080", "\x7F\\X2\\0080\\X0\\"},
      {L"a\\b", "a\\b"},
      {L"it's", "it's"},
      {L"line\nend\t\x01", "line\nend\t\x01"},
      // The substitution byte of the code page is an ordinary character.
      {L"a\x1A", "a\x1A"},
      {L"\x1A\u00E9", "\x1A\\X2\\00E9\\X0\\"},
      {L"\\X2\\00E9\\X0\\", "\\X2\\00E9\\X0\\"},
      {L"\\S\\A", "\\S\\A"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.encoded);
    VRELStringISO1030321Writer writer;
    char const* out = nullptr;
    EXPECT_EQ(writer.ConvertToASCII(VRELString(row.text), out), 0);
    EXPECT_STREQ(out, row.encoded);
  }
}

TEST(VRELStringISO1030321WriterTest, EncodesUnpairedSurrogates) {
  VRELStringISO1030321Writer writer;
  char const* out = nullptr;
  EXPECT_EQ(writer.ConvertToASCII(VRELString(static_cast<unsigned short>(0xDC00)), out), 0);
  EXPECT_STREQ(out, "\\X2\\DC00\\X0\\");
}

TEST(VRELStringISO1030321WriterTest, EmptyStringReturnsPreviousResult) {
  VRELStringISO1030321Writer writer;
  char const* out = "before";
  EXPECT_EQ(writer.ConvertToASCII(VRELString(), out), 0);
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(writer.ConvertToASCII(VRELString(L"text"), out), 0);
  char const* const held = out;
  EXPECT_EQ(writer.ConvertToASCII(VRELString(), out), 0);
  EXPECT_EQ(out, held);
  EXPECT_STREQ(out, "text");
}

TEST(VRELStringISO1030321WriterTest, UninitializedReturnsPreviousResult) {
  VRELString text(L"gone");
  VRELString const taken(std::move(text));
  VRELStringISO1030321Writer writer;
  char const* out = "before";
  EXPECT_EQ(writer.ConvertToASCII(text, out), 0);
  EXPECT_EQ(out, nullptr);
}

TEST(VRELStringISO1030321WriterTest, DoesNotReleasePreviousResult) {
  char const* first = nullptr;
  char const* second = nullptr;
  {
    VRELStringISO1030321Writer writer;
    writer.ConvertToASCII(VRELString(L"first"), first);
    writer.ConvertToASCII(VRELString(L"second"), second);
    EXPECT_STREQ(first, "first");
    EXPECT_STREQ(second, "second");
  }
  // The writer released the second string only; release the first one.
  EXPECT_STREQ(first, "first");
  delete[] first;
}

TEST(VRELStringISO1030321WriterTest, EncodesMillionRuns) {
  int const count = 1000000;
  std::u16string text;
  std::string expected;
  for (int i = 0; i < count; ++i) {
    text += u"x\u00E9";
    expected += "x\\X2\\00E9\\X0\\";
  }
  VRELStringISO1030321Writer writer;
  char const* out = nullptr;
  EXPECT_EQ(writer.ConvertToASCII(VRELString(std::u16string_view(text)), out), 0);
  ASSERT_NE(out, nullptr);
  EXPECT_TRUE(out == expected);
}

TEST(VRELStringISO1030321WriterTest, RoundTripOfRandomStrings) {
  std::mt19937 random(21);
  char16_t const units[] = {u'a',
                            u'b',
                            u' ',
                            u'\'',
                            u'\n',
                            u'\u0080',
                            u'\u00E9',
                            u'\u20AC',
                            char16_t(0xD83D),
                            char16_t(0xDE00),
                            char16_t(0xFFFF)};
  for (int round = 0; round < 5000; ++round) {
    std::u16string text;
    for (std::size_t count = 1 + random() % 30; count > 0; --count) text += units[random() % std::size(units)];
    VRELStringISO1030321Writer writer;
    char const* out = nullptr;
    ASSERT_EQ(writer.ConvertToASCII(VRELString(std::u16string_view(text)), out), 0);
    for (char const* byte = out; *byte != 0; ++byte) ASSERT_LT(static_cast<unsigned char>(*byte), 0x80);
    VRELStringISO1030321Reader reader;
    VRELString decoded;
    ASSERT_EQ(reader.ConvertFromASCII(out, decoded), 0);
    ASSERT_EQ(decoded.toUtf16(), text);
  }
}

}  // namespace
