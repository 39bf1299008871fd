#include "VRELStringISO1030321Reader.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

namespace {

class OpenReader : public VRELStringISO1030321Reader {
 public:
  char const* Held() const { return USAsciiString; }
};

TEST(VRELStringISO1030321ReaderTest, DerivesFromConverter) {
  EXPECT_TRUE((std::is_convertible_v<VRELStringISO1030321Reader*, VRELStringISO1030321Converter*>));
  EXPECT_EQ(sizeof(VRELStringISO1030321Reader), sizeof(VRELStringISO1030321Converter));
}

struct Row {
  char const* text;
  std::u16string decoded;
};

void ExpectDecoded(std::vector<Row> const& rows) {
  for (Row const& row : rows) {
    SCOPED_TRACE(row.text);
    VRELStringISO1030321Reader reader;
    VRELString out(L"before");
    EXPECT_EQ(reader.ConvertFromASCII(row.text, out), 0);
    EXPECT_EQ(out.toUtf16(), row.decoded);
  }
}

TEST(VRELStringISO1030321ReaderTest, DecodesEscapes) {
  ExpectDecoded({
      {"", u""},
      {"plain text", u"plain text"},
      {"\\S\\A", u"\u00C1"},
      {"a\\S\\Ab", u"a\u00C1b"},
      {"\\S\\A\\S\\B", u"\u00C1\u00C2"},
      {"\\S\\~", u"\u00FE"},
      {"\\S\\ x", u"\u00A0x"},
      {"\\S\\\\x", u"\u00DCx"},
      {"\\X2\\00E9\\X0\\", u"\u00E9"},
      {"\\X2\\00e9\\X0\\", u"\u00E9"},
      {"\\X2\\00E900E8\\X0\\", u"\u00E9\u00E8"},
      {"ab\\X2\\00E9\\X0\\cd\\S\\A", u"ab\u00E9cd\u00C1"},
      {"ab\\S\\Acd\\X2\\00E9\\X0\\ef", u"ab\u00C1cd\u00E9ef"},
      {"\\X2\\D83DDE00\\X0\\", u"\U0001F600"},
      {"\\X2\\D83D\\X0\\\\X2\\DE00\\X0\\", u"\U0001F600"},
      {"\\X2\\D83D\\X0\\", std::u16string(1, char16_t(0xD83D))},
      {"x\\X2\\0000\\X0\\y", u"xy"},
      {"\\X2\\0000\\X0\\", u""},
      {"\\X2\\004100000042\\X0\\", u"AB"},
  });
}

TEST(VRELStringISO1030321ReaderTest, DecodesQuadrupletsOneByOne) {
  ExpectDecoded({
      {"\\X2\\GGGG\\X0\\x", u"x"},
      {"\\X2\\41GG\\X0\\", u"A"},
      {"\\X2\\ 041\\X0\\", u"A"},
      {"\\X2\\0x41\\X0\\", u"A"},
      {"\\X2\\-001\\X0\\", std::u16string(1, char16_t(0xFFFF))},
      {"\\X2\\+041\\X0\\", u"A"},
      {"\\X2\\'041\\X0\\x", u"x"},
  });
}

TEST(VRELStringISO1030321ReaderTest, PageEscapeAtEndIsU0080) {
  ExpectDecoded({{"\\S\\", u"\u0080"}, {"ab\\S\\", u"ab\u0080"}, {"\\S\\A\\S\\", u"\u00C1\u0080"}});
}

TEST(VRELStringISO1030321ReaderTest, MalformedEscapesAreCopied) {
  ExpectDecoded({
      {"\\X2\\\\X0\\", u"\\X2\\\\X0\\"},
      {"\\X2\\X0\\", u"\\X2\\X0\\"},
      {"\\X2\\00E\\X0\\", u"\\X2\\00E\\X0\\"},
      {"\\X2\\00E90\\X0\\", u"\\X2\\00E90\\X0\\"},
      {"\\X2\\00E9", u"\\X2\\00E9"},
      {"\\X2\\", u"\\X2\\"},
      {"a\\X2\\00E9", u"a\\X2\\00E9"},
      {"\\X0\\ x \\X2\\0041\\X0\\", u"\\X0\\ x \\X2\\0041\\X0\\"},
      {"\\X0\\X2\\0041\\X0\\", u"\\X0\\X2\\0041\\X0\\"},
      {"\\X0\\", u"\\X0\\"},
  });
}

TEST(VRELStringISO1030321ReaderTest, MalformedEscapeEndsDecoding) {
  ExpectDecoded({
      {"\\X2\\00E\\X0\\\\S\\A", u"\\X2\\00E\\X0\\\\S\\A"},
      {"\\S\\A\\X2\\00E\\X0\\\\S\\A", u"\u00C1\\X2\\00E\\X0\\\\S\\A"},
      {"\\X2\\00E9\\X0\\-\\X2\\00E9-\\S\\A", u"\u00E9-\\X2\\00E9-\\S\\A"},
      // The search for the end marker begins at the start of the rest, so that a single marker makes the next escape
      // malformed ...
      {"\\S\\A \\X0\\ \\X2\\0041\\X0\\ \\S\\A", u"\u00C1 \\X0\\ \\X2\\0041\\X0\\ \\S\\A"},
      // ... unless it is part of an earlier escape.
      {"\\X2\\0041\\X0\\ \\X2\\0042\\X0\\", u"A B"},
      // A page escape before the malformed one is decoded.
      {"\\X0\\ \\S\\A\\X2\\0041\\X0\\", u"\\X0\\ \u00C1A"},
  });
}

TEST(VRELStringISO1030321ReaderTest, OtherEscapesAreCopied) {
  ExpectDecoded({
      {"\\X\\E9", u"\\X\\E9"},
      {"\\X4\\0001F600\\X0\\", u"\\X4\\0001F600\\X0\\"},
      {"\\PB\\x", u"\\PB\\x"},
      {"\\PB\\\\S\\A", u"\\PB\\\u00C1"},
      {"a\\\\b", u"a\\\\b"},
      {"a\\b", u"a\\b"},
      {"it''s", u"it''s"},
      {"\\\\S\\A", u"\\\u00C1"},
      {"\\s\\A", u"\\s\\A"},
      {"\\x2\\0041\\x0\\", u"\\x2\\0041\\x0\\"},
      {"\\X\\E9\\S\\A", u"\\X\\E9\u00C1"},
  });
}

TEST(VRELStringISO1030321ReaderTest, RestAfterEscapeIsAscii) {
  ExpectDecoded({
      {"\xC3\xA9", u"\u00E9"},
      {"\xC3\xA9\\S\\A", u"\u00E9\u00C1"},
      {"\\S\\A\xC3\xA9", u"\u00C1\x1A"},
      {"\xC3\xA9\\S\\A\xC3\xA9\\S\\B\xC3\xA9", u"\u00E9\u00C1\x1A\u00C2\x1A"},
      {"\\S\\A\xF0\x9F\x98\x80", u"\u00C1\x1A"},
      {"\\S\\A\xC2\xADz", u"\u00C1z"},  // the soft hyphen is ignored
      {"\\S\\\xC3\xA9", u"\u009A"},
      {"\\S\\\xC3\xA9\\S\\A", u"\u009A\u00C1"},
      {"\\S\\\xF0\x9F\x98\x80", u"\u009A\x1A"},  // one surrogate in each piece
      {"\\S\\\xC2\xAD", u"\u0080"},
      {"\\X2\\00E\xC3\xA9\\X0\\", u"\x0E"},
      {"\\X2\\00\xF0\x9F\x98\x80\\X0\\", u"\\X2\\00\U0001F600\\X0\\"},  // three bytes between the markers
      {"\\X2\\000\xF0\x9F\x98\x80\\X0\\\xC3\xA9", u"\x1A"},             // a quadruplet with the value 0
      {"\\X2\\0041\xC2\xAD\\X0\\", u"A"},
      {"\\S\\A\\X2\\00E\xC3\xA9\\X0\\", u"\u00C1\x0E"},
      {"\xC3\xA9\\X2\\00E9", u"\u00E9\\X2\\00E9"},
  });
}

TEST(VRELStringISO1030321ReaderTest, BadConversionFlagIfNothingDecoded) {
  VRELStringISO1030321Reader reader;
  VRELString out;
  reader.ConvertFromASCII("plain", out);
  EXPECT_TRUE(out.getBadConversion());
  reader.ConvertFromASCII("\\S\\A", out);
  EXPECT_FALSE(out.getBadConversion());
  reader.ConvertFromASCII("\\X2\\00E9", out);
  EXPECT_TRUE(out.getBadConversion());
}

TEST(VRELStringISO1030321ReaderTest, NullIsEmptyString) {
  OpenReader reader;
  VRELString out(L"before");
  reader.ConvertFromASCII("held", out);
  EXPECT_EQ(reader.ConvertFromASCII(nullptr, out), 0);
  EXPECT_EQ(out.length(), 0);
  EXPECT_EQ(reader.Held(), nullptr);
}

TEST(VRELStringISO1030321ReaderTest, HoldsRestAfterLastEscape) {
  OpenReader reader;
  VRELString out;
  reader.ConvertFromASCII("plain", out);
  EXPECT_STREQ(reader.Held(), "plain");
  reader.ConvertFromASCII("a\\S\\Ab\\S\\Acd\xC3\xA9", out);
  EXPECT_STREQ(reader.Held(), "cd\x1A");
  reader.ConvertFromASCII("a\\S\\A", out);
  EXPECT_STREQ(reader.Held(), "");
  reader.ConvertFromASCII("\\S\\Ab\\X2\\0041", out);
  EXPECT_STREQ(reader.Held(), "b\\X2\\0041");
}

TEST(VRELStringISO1030321ReaderTest, DecodesOwnString) {
  OpenReader reader;
  reader.ResetUSAsciiString("a\\S\\Ab\\S\\B");
  VRELString out;
  EXPECT_EQ(reader.ConvertFromASCII(reader.Held(), out), 0);
  EXPECT_EQ(out.toUtf16(), u"a\u00C1b\u00C2");
}

TEST(VRELStringISO1030321ReaderTest, ReaderCanBeReused) {
  VRELStringISO1030321Reader reader;
  VRELString out;
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(reader.ConvertFromASCII("\\X2\\00E9\\X0\\!", out), 0);
    EXPECT_EQ(out.toUtf16(), u"\u00E9!");
  }
}

TEST(VRELStringISO1030321ReaderTest, DecodesMillionEscapes) {
  int const count = 500000;
  std::string text;
  std::u16string expected;
  for (int i = 0; i < count; ++i) {
    text += "x\\S\\A\\X2\\00E9\\X0\\";
    expected += u"x\u00C1\u00E9";
  }
  VRELStringISO1030321Reader reader;
  VRELString out;
  EXPECT_EQ(reader.ConvertFromASCII(text.c_str(), out), 0);
  EXPECT_TRUE(out.toUtf16() == expected);
  // Only page escapes, so that no marker of the other form is found.
  text.clear();
  for (int i = 0; i < count; ++i) text += "\\S\\A";
  EXPECT_EQ(reader.ConvertFromASCII(text.c_str(), out), 0);
  EXPECT_TRUE(out.toUtf16() == std::u16string(count, u'\u00C1'));
}

// The documented recursive algorithm.
class Model {
 public:
  VRELString Convert(char const* text) {
    held = text;
    VRELString const whole(text);
    VRELString out = whole;
    int const page = whole.indexOf(VRELString("\\S\\", "US-ASCII"), 0);
    int const units = whole.indexOf(VRELString("\\X2\\", "US-ASCII"), 0);
    if (page < 0 && units < 0) return out;
    bool const isPage = page >= 0 && (units < 0 || page < units);
    int const start = isPage ? page : units;
    int const end = isPage ? page + 4 : 4 + whole.indexOf(VRELString("\\X0\\", "US-ASCII"), 0);
    std::string const piece = Bytes(whole.substring(start, end));
    VRELString decoded;
    if (!(isPage ? DecodePage(piece, decoded) : DecodeUnits(piece, decoded))) return out;
    VRELString const head = whole.substring(0, start);
    VRELString const tail = Convert(Bytes(whole.substring(end, whole.length())).c_str());
    return head + decoded + tail;
  }

  std::string held;

 private:
  static std::string Bytes(VRELString const& text) {
    std::vector<char> buffer(static_cast<std::size_t>(text.getConvertToMBCSSize("US-ASCII")));
    text.convertToMBCS(buffer.data(), static_cast<int>(buffer.size()), "US-ASCII", false);
    return buffer.data();
  }
  static bool DecodePage(std::string const& piece, VRELString& decoded) {
    if (piece.compare(0, 3, "\\S\\") != 0) return false;
    int const byte = piece.size() > 3 ? static_cast<unsigned char>(piece[3]) : 0;
    decoded = VRELString(static_cast<unsigned short>((byte + 128) % 256));
    return true;
  }
  static bool DecodeUnits(std::string const& piece, VRELString& decoded) {
    int const length = static_cast<int>(piece.size());
    if (piece.compare(0, 4, "\\X2\\") != 0 || length - 8 <= 0 || length % 4 != 0) return false;
    if (piece.compare(piece.size() - 4, 4, "\\X0\\") != 0) return false;
    for (int i = 0; i < (length - 8) / 4; ++i) {
      unsigned int value = 0;
      std::sscanf(piece.substr(static_cast<std::size_t>(4 + 4 * i), 4).c_str(), "%x", &value);
      decoded = decoded + VRELString(static_cast<unsigned short>(value));
    }
    return true;
  }
};

TEST(VRELStringISO1030321ReaderTest, EqualsModelOnRandomStrings) {
  // Complete escapes are frequent, so that the recursion is deep; the other pieces make escapes malformed.
  std::vector<std::string> const good = {"\\S\\A", "\\X2\\00E9\\X0\\", "\\X2\\D83DDE00\\X0\\", "\\S\\ ", "text"};
  std::vector<std::string> const fragments = {"\\S\\",    "\\X2\\", "\\X0\\",       "00E9",
                                              "D83D",     "DE00",   "0000",         "00",
                                              "G",        " 41",    "-001",         "0x1F",
                                              "\\",       "\\X\\",  "\\X4\\",       "\\PA\\",
                                              "A",        "'",      "\xC3\xA9",     "\xF0\x9F\x98\x80",
                                              "\xC2\xAD", "\x1A",   "\xFF",         "X0\\",
                                              "S\\",      "X2\\",   "\xED\xA0\x80", "\n",
                                              "\t00",     "\x7F"};
  std::mt19937 random(10303);
  int decodedTexts = 0;
  for (int round = 0; round < 40000; ++round) {
    std::string text;
    std::size_t const share = 1 + random() % 10;
    for (std::size_t count = random() % 14; count > 0; --count) {
      text += random() % 10 < share ? good[random() % good.size()] : fragments[random() % fragments.size()];
    }
    SCOPED_TRACE(testing::PrintToString(text));
    Model model;
    VRELString const expected = model.Convert(text.c_str());
    OpenReader reader;
    VRELString out;
    ASSERT_EQ(reader.ConvertFromASCII(text.c_str(), out), 0);
    ASSERT_EQ(out.toUtf16(), expected.toUtf16());
    ASSERT_EQ(out.getBadConversion(), expected.getBadConversion());
    ASSERT_EQ(reader.Held(), model.held);
    if (!out.getBadConversion()) ++decodedTexts;
  }
  EXPECT_GT(decodedTexts, 10000);
}

}  // namespace
