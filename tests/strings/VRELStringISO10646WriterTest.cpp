#include "VRELStringISO10646Writer.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <string>
#include <type_traits>
#include <utility>

namespace {

VRELString Text(std::u16string const& units) {
  return VRELString(std::u16string_view(units));
}

TEST(VRELStringISO10646WriterTest, Encodes) {
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELStringISO10646Writer>);
  struct Row {
    std::u16string text;
    std::u16string encoded;
  };
  Row const rows[] = {
      {u"", u""},
      {u"abc", u"abc"},
      {u"\u00E9", u"\\X2\\00E9\\X0\\"},
      {u"ab\u00E9\u00E8cd", u"ab\\X2\\00E900E8\\X0\\cd"},
      {u"\u00E9 \u00E8", u"\\X2\\00E9\\X0\\ \\X2\\00E8\\X0\\"},
      {u"\U0001F600", u"\\X2\\D83DDE00\\X0\\"},
      {u"a\\b'", u"a\\b'"},
  };
  for (Row const& row : rows) {
    VRELStringISO10646Writer writer(Text(row.text));
    SCOPED_TRACE(Text(row.encoded).toUtf8());
    // A second call returns the same.
    for (int i = 0; i < 2; ++i) {
      VRELString out(L"before");
      EXPECT_EQ(writer.GetResult(out), 0);
      EXPECT_EQ(out.toUtf16(), row.encoded);
    }
  }
}

TEST(VRELStringISO10646WriterTest, AsciiStringKeepsFlag) {
  VRELString out;
  VRELStringISO10646Writer(VRELString("abc")).GetResult(out);
  EXPECT_TRUE(out.getBadConversion());
  VRELStringISO10646Writer(VRELString("ab\xC3\xA9")).GetResult(out);
  EXPECT_FALSE(out.getBadConversion());
}

TEST(VRELStringISO10646WriterTest, EndsAtInnerZero) {
  VRELString const text("x+AAAA6Q-", "UTF-7");  // x, U+0000, U+00E9
  ASSERT_EQ(text.length(), 3);
  VRELString out;
  EXPECT_EQ(VRELStringISO10646Writer(text).GetResult(out), 0);
  EXPECT_EQ(out.toUtf16(), u"x");
}

TEST(VRELStringISO10646WriterTest, UninitializedStringIsCopied) {
  VRELString text(L"gone");
  VRELString const taken(std::move(text));
  VRELString out(L"before");
  EXPECT_EQ(VRELStringISO10646Writer(text).GetResult(out), 0);
  EXPECT_FALSE(out.getIsInitialized());
}

TEST(VRELStringISO10646WriterTest, ClassifiesAscii) {
  VRELStringISO10646Writer const writer{VRELString()};
  for (int unit = 0; unit < 0x10000; ++unit) {
    auto const u = static_cast<unsigned short>(unit);
    ASSERT_EQ(writer.IsUSAscii(u), unit < 128) << unit;
  }
}

TEST(VRELStringISO10646WriterTest, FindsFirstRun) {
  struct Row {
    std::u16string text;
    int start;
    int end;
  };
  Row const rows[] = {
      {u"", -1, -1},
      {u"abc", -1, -1},
      {u"\x7F", -1, -1},
      {u"\u0080", 0, 1},
      {u"\u00E9", 0, 1},
      {u"ab\u00E9\u00E8cd", 2, 4},
      {u"a\u00E9b\u00E8", 1, 2},
      {u"ab\U0001F600", 2, 4},
      {u"\u00E9\u00E8", 0, 2},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(Text(row.text).toUtf8());
    int start = 77;
    int end = 77;
    VRELStringISO10646Writer writer{VRELString()};
    EXPECT_EQ(writer.GetFirstNonAsciiSubstring(Text(row.text), start, end), row.start < 0 ? VREL_E_FAIL : 0);
    EXPECT_EQ(start, row.start);
    EXPECT_EQ(end, row.end);
  }
}

TEST(VRELStringISO10646WriterTest, WritesQuadruplets) {
  struct Row {
    unsigned short unit;
    std::u16string digits;
  };
  Row const rows[] = {{0, u"0000"}, {1, u"0001"}, {0xE9, u"00E9"}, {0xABCD, u"ABCD"}, {0xFFFF, u"FFFF"}};
  VRELStringISO10646Writer writer{VRELString()};
  for (Row const& row : rows) {
    VRELString out(L"before");
    EXPECT_EQ(writer.GetQuadrupletAsciiString(row.unit, out), 0);
    EXPECT_EQ(out.toUtf16(), row.digits);
  }
}

TEST(VRELStringISO10646WriterTest, EncodesAllUnits) {
  VRELStringISO10646Writer writer{VRELString()};
  VRELString out(L"before");
  EXPECT_EQ(writer.GetEncodedAsciiString(VRELString(L"A\u00E9\U0001F600"), out), 0);
  EXPECT_EQ(out.toUtf16(), u"\\X2\\004100E9D83DDE00\\X0\\");
  EXPECT_EQ(writer.GetEncodedAsciiString(VRELString(L"A"), out), 0);
  EXPECT_EQ(out.toUtf16(), u"\\X2\\0041\\X0\\");
  EXPECT_EQ(writer.GetEncodedAsciiString(VRELString(), out), 0);
  EXPECT_EQ(out.length(), 0);
  VRELString gone(L"gone");
  VRELString const taken(std::move(gone));
  out = taken;
  EXPECT_EQ(writer.GetEncodedAsciiString(gone, out), 0);
  EXPECT_TRUE(out.getIsInitialized());
  EXPECT_EQ(out.length(), 0);
}

// The documented recursive algorithm.
VRELString Model(VRELString const& source) {
  int start = -1;
  int end = -1;
  for (int i = 0; i < source.length() && (start < 0 || end == i); ++i) {
    if (source.charAt(i) < 128) continue;
    if (start < 0) start = i;
    end = i + 1;
  }
  if (start < 0) return source;
  VRELString encoded(L"\\X2\\");
  for (int i = start; i < end; ++i) {
    char digits[8];
    std::snprintf(digits, sizeof digits, "%04X", static_cast<unsigned int>(source.charAt(i)));
    encoded = encoded + VRELString(digits, "US-ASCII");
  }
  VRELString const tail = Model(source.substring(end, source.length() + 1));
  return source.substring(0, start) + (encoded + VRELString(L"\\X0\\")) + tail;
}

TEST(VRELStringISO10646WriterTest, EqualsModelOnRandomStrings) {
  std::mt19937 random(10646);
  char16_t const units[] = {
      u'a', u'Z', u'\\', u'\x7F', u'\u0080', u'\u00E9', u'\uABCD', char16_t(0xD83D), char16_t(0xDE00)};
  for (int round = 0; round < 10000; ++round) {
    std::u16string text;
    for (std::size_t count = random() % 20; count > 0; --count) text += units[random() % std::size(units)];
    VRELString out;
    ASSERT_EQ(VRELStringISO10646Writer(Text(text)).GetResult(out), 0);
    ASSERT_EQ(out.toUtf16(), Model(Text(text)).toUtf16());
  }
}

}  // namespace
