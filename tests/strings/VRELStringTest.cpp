#include "VRELString.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unicode/stringoptions.h>
#include <unicode/ucnv.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

#include "ChildProcess.h"
#include "VRELStringBlocks.h"

#if defined(__SANITIZE_ADDRESS__)
#define LIMITS_OF_MEMORY_WORK false
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LIMITS_OF_MEMORY_WORK false
#endif
#endif
#ifndef LIMITS_OF_MEMORY_WORK
#define LIMITS_OF_MEMORY_WORK true
#endif

namespace {

// Creates a string from UTF-16 units.
VRELString Text(std::u16string const& units) {
  std::vector<unsigned short> copy(units.begin(), units.end());
  copy.push_back(0);
  return VRELString(copy.data());
}

// Returns the units of a string, read one by one.
std::u16string Units(VRELString const& text) {
  std::u16string units;
  for (int i = 0; i < text.length(); ++i) units += static_cast<char16_t>(text.charAt(i));
  return units;
}

// Returns the ICU string of a VRELString of these units: the units and one U+0000.
icu::UnicodeString Model(std::u16string const& units) {
  return icu::UnicodeString(units.c_str(), static_cast<int>(units.size()) + 1);
}

// "a", U+0000, "b". UTF-7 encodes U+0000 in bytes other than 0.
VRELString TextWithZero() {
  return VRELString("a+AAA-b", "UTF-7");
}

VRELString Uninitialized() {
  VRELString text(L"gone");
  VRELString const taken(std::move(text));
  return text;
}

int Sign(int value) {
  return (value > 0) - (value < 0);
}

TEST(VRELStringTest, SizeAndVirtualDestructor) {
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELString>);
  EXPECT_EQ(sizeof(VRELString), 3 * sizeof(void*));
}

TEST(VRELStringTest, NameOfAsciiCodePage) {
  EXPECT_STREQ(VRELString::CODEPAGE_NAME_ASCII, "US-ASCII");
}

TEST(VRELStringTest, SetOfInvariantCharacters) {
  std::string const variant = "\n!#$@[\\]^`{|}~";
  for (int c = 0; c < 128; ++c) {
    SCOPED_TRACE(c);
    bool const marked = ((VRELString::invChars[c / 32] >> (c % 32)) & 1) != 0;
    EXPECT_EQ(marked, variant.find(static_cast<char>(c)) == std::string::npos);
  }
}

TEST(VRELStringTest, DefaultIsEmpty) {
  VRELString const text;
  EXPECT_TRUE(text.getIsInitialized());
  EXPECT_FALSE(text.getBadConversion());
  EXPECT_EQ(text.length(), 0);
  EXPECT_EQ(text.charAt(0), 0);
  EXPECT_EQ(text.charAt(1), 0xFFFF);
}

TEST(VRELStringTest, ConstructsFromCodePoint) {
  struct Row {
    int codePoint;
    std::u16string units;
  };
  Row const rows[] = {
      {0, u""},
      {'A', u"A"},
      {0xE9, u"\u00E9"},
      {0xD800, std::u16string(1, char16_t(0xD800))},
      {0xDFFF, std::u16string(1, char16_t(0xDFFF))},
      {0xFFFD, u"\uFFFD"},
      {0xFFFF, std::u16string(1, char16_t(0xFFFF))},
      {0x10000, {char16_t(0xD800), char16_t(0xDC00)}},
      {0x1F600, {char16_t(0xD83D), char16_t(0xDE00)}},
      {0x10FFFF, {char16_t(0xDBFF), char16_t(0xDFFF)}},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.codePoint);
    VRELString const text(row.codePoint);
    EXPECT_TRUE(text.getIsInitialized());
    EXPECT_FALSE(text.getBadConversion());
    EXPECT_EQ(text.length(), static_cast<int>(row.units.size()));
    EXPECT_EQ(Units(text), row.units);
    EXPECT_EQ(text.charAt(text.length()), 0);
  }
}

TEST(VRELStringTest, InvalidCodePointIsEmpty) {
  for (int codePoint : {-1, INT_MIN, 0x110000, INT_MAX}) {
    SCOPED_TRACE(codePoint);
    VRELString const text(codePoint);
    EXPECT_TRUE(text.getIsInitialized());
    EXPECT_EQ(text.length(), 0);
    EXPECT_EQ(text.charAt(0), 0);
  }
}

TEST(VRELStringTest, ConstructsFromUnit) {
  EXPECT_EQ(VRELString(static_cast<unsigned short>(0)).length(), 0);
  for (unsigned short const unit :
       std::initializer_list<unsigned short>{1, 0x41, 0xC1, 0xD83D, 0xDE00, 0xFFFE, 0xFFFF}) {
    SCOPED_TRACE(unit);
    VRELString const text(unit);
    EXPECT_EQ(text.length(), 1);
    EXPECT_EQ(text.charAt(0), unit);
    EXPECT_EQ(text.charAt(1), 0);
    EXPECT_FALSE(text.getBadConversion());
  }
}

TEST(VRELStringTest, ConstructsFromUtf32) {
  int const units[] = {'a', 0xE9, 0x1F600, 'z', 0, 'x', 0};
  VRELString const text(units);
  EXPECT_EQ(Units(text), u"a\u00E9\U0001F600z");
  EXPECT_EQ(text.length(), 5);
  EXPECT_FALSE(text.getBadConversion());
  int const nothing[] = {0};
  EXPECT_EQ(VRELString(nothing).length(), 0);
  EXPECT_FALSE(VRELString(nothing).getBadConversion());
}

TEST(VRELStringTest, ConstructsFromWideCharacters) {
  VRELString const text(L"a\u00E9\U0001F600z");
  EXPECT_EQ(Units(text), u"a\u00E9\U0001F600z");
  EXPECT_FALSE(text.getBadConversion());
  EXPECT_EQ(VRELString(L"").length(), 0);
  EXPECT_FALSE(VRELString(L"").getBadConversion());
  VRELString const cut(L"ab\0cd");
  EXPECT_EQ(Units(cut), u"ab");
  std::wstring const longText(100000, L'\U0001F600');
  VRELString const pairs(longText.c_str());
  EXPECT_EQ(pairs.length(), 200000);
  EXPECT_EQ(pairs.charAt(199998), 0xD83D);
  EXPECT_EQ(pairs.charAt(199999), 0xDE00);
  EXPECT_EQ(pairs.charAt(200000), 0);
}

TEST(VRELStringTest, NullIsEmptyString) {
  VRELString const texts[] = {VRELString(static_cast<int const*>(nullptr)),
                              VRELString(static_cast<wchar_t const*>(nullptr)),
                              VRELString(static_cast<unsigned short const*>(nullptr)),
                              VRELString(static_cast<char const*>(nullptr), "US-ASCII")};
  for (VRELString const& text : texts) {
    EXPECT_TRUE(text.getIsInitialized());
    EXPECT_FALSE(text.getBadConversion());
    EXPECT_EQ(text.length(), 0);
    EXPECT_EQ(text.charAt(0), 0);
  }
  VRELString const bytes(static_cast<char const*>(nullptr));
  EXPECT_EQ(bytes.length(), 0);
  EXPECT_TRUE(bytes.getBadConversion());
}

TEST(VRELStringTest, InvalidUtf32SetsFlag) {
  for (int bad : {0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0x110000, 0x7FFFFFFF, -1}) {
    SCOPED_TRACE(bad);
    int const units[] = {'a', bad, 'b', 0};
    wchar_t const wide[] = {L'a', static_cast<wchar_t>(bad), L'b', 0};
    for (VRELString const& text : {VRELString(units), VRELString(wide)}) {
      EXPECT_TRUE(text.getBadConversion());
      EXPECT_TRUE(text.getIsInitialized());
      EXPECT_EQ(text.length(), 0);
      EXPECT_EQ(text.charAt(0), 0);
      EXPECT_EQ(text.getConvertToUTF16Size(), 1);
    }
  }
  int const pair[] = {0xD83D, 0xDE00, 0};
  EXPECT_TRUE(VRELString(pair).getBadConversion()) << "surrogates are no UTF-32, not even in pairs";
}

TEST(VRELStringTest, ConstructsFromAnyUtf16) {
  std::u16string const lone = {u'a', char16_t(0xDC00), u'b', char16_t(0xD800)};
  VRELString const text = Text(lone);
  EXPECT_EQ(Units(text), lone);
  EXPECT_FALSE(text.getBadConversion());
  unsigned short const cut[] = {'a', 0, 'b', 0};
  EXPECT_EQ(Units(VRELString(cut)), u"a");
}

TEST(VRELStringTest, ConstructsFromNamedCodePage) {
  struct Row {
    char const* bytes;
    char const* codepage;
    std::u16string units;
  };
  Row const rows[] = {
      {"abc", "US-ASCII", u"abc"},
      {"", "US-ASCII", u""},
      {"a\xE9", "US-ASCII", u"a\uFFFD"},
      {"\xE9", "ISO-8859-1", u"\u00E9"},
      {"\x80", "US-ASCII", u"\uFFFD"},
      {"\x80", "windows-1252", u"\u20AC"},
      {"\xC3\xA9\xF0\x9F\x98\x80", "UTF-8", u"\u00E9\U0001F600"},
      {"\x83\x41", "Shift_JIS", u"\u30A2"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.codepage);
    VRELString const text(row.bytes, row.codepage);
    EXPECT_FALSE(text.getBadConversion());
    EXPECT_EQ(Units(text), row.units);
    EXPECT_EQ(text.charAt(text.length()), 0);
  }
}

TEST(VRELStringTest, DefaultCodePageSetsFlag) {
  for (char const* codepage : {static_cast<char const*>(nullptr), "", "no-such-codepage"}) {
    VRELString const text("abc", codepage);
    EXPECT_TRUE(text.getBadConversion());
    EXPECT_EQ(text.length(), 3);
    EXPECT_EQ(Units(text), u"abc");
  }
  EXPECT_TRUE(VRELString("abc").getBadConversion());
}

// The default code page of ICU on Linux is UTF-8.
TEST(VRELStringTest, DefaultCodePageRoundTrip) {
  ASSERT_STREQ(ucnv_getDefaultName(), "UTF-8");
  for (char const* codepage : {static_cast<char const*>(nullptr), "no-such-codepage"}) {
    VRELString const text("\xC3\xA9!", codepage);
    EXPECT_EQ(Units(text), u"\u00E9!");
    EXPECT_TRUE(text.getBadConversion());
    EXPECT_EQ(text.getConvertToMBCSSize(codepage), 4);
    char bytes[4] = {'x', 'x', 'x', 'x'};
    EXPECT_EQ(text.convertToMBCS(bytes, 4, codepage, false), 0);
    EXPECT_STREQ(bytes, "\xC3\xA9!");
    EXPECT_EQ(text.convertToMBCS(bytes, 3, codepage, false), VREL_E_FAIL);
  }
  EXPECT_EQ(Units(VRELString("\xC3\xA9", "")), u"\u00E9");
  EXPECT_EQ(Units(VRELString("a\xE9")), u"a\uFFFD");
  char* chars = nullptr;
  EXPECT_EQ(VRELStringToChars(VRELString(L"\u00E9\U0001F600"), chars), 0);
  EXPECT_STREQ(chars, "\xC3\xA9\xF0\x9F\x98\x80");
  VRELReleaseChars(chars);
}

TEST(VRELStringTest, ConstructsFromStandardStrings) {
  EXPECT_EQ(Units(VRELString(std::string("\xC3\xA9!"))), u"\u00E9!");
  EXPECT_EQ(Units(VRELString(std::string("a\xFF"))), u"a\uFFFD");
  EXPECT_EQ(Units(VRELString(std::string("ab\0cd", 5))), u"ab");
  EXPECT_EQ(Units(VRELString(std::u16string_view(u"ab\0cd", 5))), u"ab");
  EXPECT_EQ(Units(VRELString(std::u16string_view(u"abcd").substr(1, 2))), u"bc");
  EXPECT_FALSE(VRELString(std::string("abc")).getBadConversion());
  EXPECT_EQ(VRELString(std::u16string_view()).length(), 0);
}

TEST(VRELStringTest, ConvertsToStandardStrings) {
  VRELString const text(L"a\u00E9\U0001F600");
  EXPECT_EQ(text.view(), u"a\u00E9\U0001F600");
  EXPECT_EQ(text.toUtf16(), u"a\u00E9\U0001F600");
  EXPECT_EQ(text.toUtf8(), "a\xC3\xA9\xF0\x9F\x98\x80");
  std::ostringstream stream;
  stream << text << VRELString();
  EXPECT_EQ(stream.str(), "a\xC3\xA9\xF0\x9F\x98\x80");
  EXPECT_EQ(Uninitialized().view(), u"");
  EXPECT_EQ(Uninitialized().toUtf16(), u"");
  EXPECT_EQ(Uninitialized().toUtf8(), "");
}

TEST(VRELStringTest, ConstructsFromViewsAndUtf16Literals) {
  using namespace std::string_view_literals;
  EXPECT_EQ(Units(VRELString("Tr\xC3\xA4ger M8"sv.substr(0, 7))), u"Tr\u00E4ger");
  EXPECT_EQ(Units(VRELString("a\0b"sv)), u"a");
  EXPECT_EQ(Units(VRELString("\xFF"sv)), u"\uFFFD");
  EXPECT_EQ(VRELString(std::string_view()).length(), 0);
  EXPECT_EQ(Units(VRELString(L"bolt \U0001F529 M8"sv.substr(0, 6))), u"bolt \U0001F529");
  EXPECT_EQ(Units(VRELString(L"a\0b"sv)), u"a");
  EXPECT_EQ(VRELString(std::wstring_view()).length(), 0);
  VRELString const surrogate(std::wstring(1, wchar_t(0xD800)));
  EXPECT_EQ(surrogate.length(), 0);
  EXPECT_TRUE(surrogate.getBadConversion());
  VRELString const literal = u"\u00E9";
  EXPECT_EQ(Units(literal), u"\u00E9");
  EXPECT_FALSE(literal.getBadConversion());
  EXPECT_EQ(VRELString(static_cast<char16_t const*>(nullptr)).length(), 0);
}

TEST(VRELStringTest, WideStringsAroundFastPathLimits) {
  // One value on each side of the limits of the fast path, of the surrogates and of the planes.
  for (std::uint32_t scalar : {0x7Fu, 0x80u, 0x7FFFu, 0x8000u, 0xD7FFu, 0xE000u, 0xFFFFu, 0x10000u, 0x10FFFFu}) {
    for (std::size_t length : {1u, 3u, 4u, 26u, 27u, 400u}) {
      std::wstring wide(length, L'a');
      wide[length / 2] = static_cast<wchar_t>(scalar);
      VRELString const text(wide.c_str());
      EXPECT_FALSE(text.getBadConversion());
      EXPECT_EQ(text.length(), static_cast<int>(length) + (scalar > 0xFFFF ? 1 : 0));
      EXPECT_EQ(text.toWide(), wide);
    }
  }
  for (std::uint32_t value : {0xD800u, 0xDFFFu, 0x110000u, 0xFFFFFFFFu}) {
    std::wstring wide(400, L'a');
    wide[399] = static_cast<wchar_t>(value);
    VRELString const text(wide.c_str());
    EXPECT_TRUE(text.getBadConversion());
    EXPECT_EQ(text.length(), 0);
  }
}

TEST(VRELStringTest, ToWideReplacesLoneSurrogates) {
  EXPECT_EQ(Text(u"a\u00E9\U0001F600").toWide(), L"a\u00E9\U0001F600");
  EXPECT_EQ(Text({u'a', 0xD83D}).toWide(), L"a\uFFFD");
  EXPECT_EQ(Text({0xDE00, u'b'}).toWide(), L"\uFFFDb");
  EXPECT_EQ(Uninitialized().toWide(), L"");
  EXPECT_EQ(TextWithZero().toWide(), std::wstring(L"a\0b", 3));
}

TEST(VRELStringTest, EqualityComparesAllUnits) {
  VRELString const text(L"Stra\u00DFe");
  EXPECT_TRUE(text == L"Stra\u00DFe");
  EXPECT_TRUE(u"Stra\u00DFe" == text);
  EXPECT_TRUE(text != L"strasse");
  EXPECT_TRUE("Stra" != text);
  EXPECT_FALSE(text == VRELString());
  EXPECT_FALSE(text != text);
  EXPECT_TRUE(VRELString(L"\u00E9") != VRELString(L"e\u0301"));
  EXPECT_TRUE(TextWithZero() == TextWithZero());
  EXPECT_TRUE(TextWithZero() != VRELString(L"a"));
  EXPECT_TRUE(Uninitialized() == Uninitialized());
  EXPECT_TRUE(Uninitialized() != VRELString());
  EXPECT_TRUE(VRELString() != Uninitialized());
  // The flag is not part of the string.
  EXPECT_TRUE(VRELString("a") == VRELString(L"a"));
}

TEST(VRELStringTest, StandardHashAgreesWithEquality) {
  std::hash<VRELString> const hash;
  EXPECT_EQ(hash(L"bolt"), hash("bolt"));
  EXPECT_NE(hash(L"bolt"), hash(L"Bolt"));
  EXPECT_EQ(hash(Uninitialized()), hash(Uninitialized()));
  std::unordered_map<VRELString, int> counts;
  ++counts[L"bolt"];
  ++counts[u"bolt"];
  ++counts[L"Bolt"];
  EXPECT_EQ(counts.size(), 2u);
  EXPECT_EQ(counts[L"bolt"], 2);
}

TEST(VRELStringTest, JoinsLiteralsOnBothSides) {
  VRELString const text(L"b");
  EXPECT_EQ(Units(L"a\u00E9" + text + L"c"), u"a\u00E9bc");
  EXPECT_EQ(Units(u"a" + text + u"c"), u"abc");
  EXPECT_EQ(Units("a" + text + "c"), u"abc");
  EXPECT_EQ(Units(static_cast<wchar_t const*>(nullptr) + text), u"b");
  EXPECT_FALSE(("a" + text).getBadConversion());
}

TEST(VRELStringTest, AppendEqualsConcatenation) {
  struct {
    VRELString left;
    VRELString right;
  } const rows[] = {
      {VRELString(), VRELString()},
      {VRELString(), VRELString(L"b")},
      {VRELString(L"a"), VRELString()},
      {VRELString("a"), VRELString(L"b")},
      {VRELString(std::wstring(26, L'a')), VRELString(L"\U0001F529")},
      {VRELString(std::wstring(300, L'a')), VRELString(std::wstring(500, L'b'))},
      {TextWithZero(), VRELString(L"b")},
      {VRELString(L"x"), TextWithZero()},
      {Uninitialized(), VRELString(L"b")},
      {VRELString(L"a"), Uninitialized()},
      {Uninitialized(), Uninitialized()},
  };
  for (auto const& row : rows) {
    VRELString const expected = row.left + row.right;
    VRELString text(row.left);
    if (row.left.getHoldsZero()) text = TextWithZero();
    if (!row.left.getIsInitialized()) text = Uninitialized();
    VRELString& same = text += row.right;
    EXPECT_EQ(&same, &text);
    EXPECT_EQ(Units(text), Units(expected));
    EXPECT_EQ(text.getIsInitialized(), expected.getIsInitialized());
    EXPECT_EQ(text.getBadConversion(), expected.getBadConversion());
    EXPECT_EQ(text.getHoldsZero(), expected.getHoldsZero());
    EXPECT_EQ(text.charAt(text.length()), expected.charAt(expected.length()));
  }
}

TEST(VRELStringTest, AppendsItselfAndLeavesCopiesUnchanged) {
  VRELString text(std::wstring(40, L'a'));
  VRELString const copy(text);
  text += text;
  EXPECT_EQ(Units(text), std::u16string(80, u'a'));
  text += L"b";
  EXPECT_EQ(Units(copy), std::u16string(40, u'a'));
  VRELString many;
  for (int i = 0; i < 200000; ++i) many += L"xy";
  EXPECT_EQ(many.length(), 400000);
  EXPECT_EQ(many.charAt(399999), 'y');
}

TEST(VRELStringTest, CopyKeepsFlag) {
  VRELString const flagged("abc");
  VRELString const copy(flagged);
  EXPECT_TRUE(copy.getBadConversion());
  EXPECT_EQ(Units(copy), u"abc");
  EXPECT_NE(copy.view().data(), flagged.view().data());
  VRELString const plain(L"abc");
  EXPECT_FALSE(VRELString(plain).getBadConversion());
}

TEST(VRELStringTest, CopyEndsAtFirstZero) {
  VRELString const text = TextWithZero();
  ASSERT_EQ(text.length(), 3);
  EXPECT_EQ(text.charAt(0), 'a');
  EXPECT_EQ(text.charAt(1), 0);
  EXPECT_EQ(text.charAt(2), 'b');
  EXPECT_EQ(text.charAt(3), 0);
  EXPECT_EQ(Units(VRELString(text)), u"a");
  VRELString assigned(L"xyz");
  assigned = text;
  EXPECT_EQ(Units(assigned), u"a");
  EXPECT_EQ(text.length(), 3) << "the source stays";
}

TEST(VRELStringTest, AssignmentReplacesStringAndFlag) {
  VRELString target(L"old");
  VRELString const flagged("new");
  EXPECT_EQ(&(target = flagged), &target);
  EXPECT_EQ(Units(target), u"new");
  EXPECT_TRUE(target.getBadConversion());
  VRELString const& itself = target;
  EXPECT_EQ(&(target = itself), &target);
  EXPECT_EQ(Units(target), u"new");
  EXPECT_TRUE(target.getBadConversion());
  target = VRELString(L"plain");
  EXPECT_EQ(Units(target), u"plain");
  EXPECT_FALSE(target.getBadConversion());
  target = Uninitialized();
  EXPECT_FALSE(target.getIsInitialized());
  target = flagged;
  EXPECT_EQ(Units(target), u"new");
}

TEST(VRELStringTest, SelfAssignmentKeepsInnerZero) {
  VRELString text = TextWithZero();
  VRELString const& itself = text;
  text = itself;
  EXPECT_EQ(text.length(), 3);
}

TEST(VRELStringTest, MoveLeavesSourceUninitialized) {
  VRELString source("abc");
  VRELString target(std::move(source));
  EXPECT_EQ(Units(target), u"abc");
  EXPECT_TRUE(target.getBadConversion());
  EXPECT_FALSE(source.getIsInitialized());
  VRELString assigned(L"old");
  assigned = std::move(target);
  EXPECT_EQ(Units(assigned), u"abc");
  EXPECT_TRUE(assigned.getBadConversion());
}

TEST(VRELStringTest, UninitializedReturnsDocumentedValues) {
  VRELString const text = Uninitialized();
  VRELString const other(L"abc");
  VRELString const empty;
  EXPECT_FALSE(text.getIsInitialized());
  EXPECT_EQ(text.length(), -1);
  EXPECT_EQ(text.charAt(0), 0xFFFF);
  EXPECT_EQ(text.charAt(-1), 0xFFFF);
  EXPECT_EQ(text.hashCode(), 0);
  EXPECT_EQ(text.compareTo(other), -1);
  EXPECT_EQ(text.compareToIgnoreCase(other), -1);
  EXPECT_EQ(text.compareTo(empty), -1);
  EXPECT_EQ(text.compareToIgnoreCase(empty), -1);
  EXPECT_FALSE(text.equals(empty));
  EXPECT_FALSE(text.equalsIgnoreCase(empty));
  EXPECT_FALSE(text > other);
  EXPECT_TRUE(text < other);
  EXPECT_TRUE(text <= other);
  EXPECT_FALSE(text.startsWith(other));
  EXPECT_FALSE(text.endsWith(other));
  EXPECT_FALSE(text.startsWith(empty));
  EXPECT_FALSE(text.endsWith(empty));
  EXPECT_EQ(text.indexOf(static_cast<unsigned short>('a')), -1);
  EXPECT_EQ(text.indexOf(static_cast<unsigned short>('a'), 0), -1);
  EXPECT_EQ(text.lastIndexOf(static_cast<unsigned short>('a')), -1);
  EXPECT_EQ(text.lastIndexOf(static_cast<unsigned short>('a'), 0), -1);
  EXPECT_EQ(text.indexOf(other, 0), -1);
  EXPECT_EQ(text.lastIndexOf(other, 0), -1);
  EXPECT_EQ(text.indexOf(empty, -5), -1);
  EXPECT_EQ(text.lastIndexOf(empty, -5), -1);
  for (VRELString const& derived :
       {text + other, text.substring(0, 1), text.substring(0), text.replace('a', 'b'), text.replace(0, 'b')}) {
    EXPECT_TRUE(derived.getIsInitialized());
    EXPECT_EQ(derived.length(), 0);
    EXPECT_FALSE(derived.getBadConversion());
  }
  EXPECT_EQ(text.getConvertToUTF8Size(), 0);
  EXPECT_EQ(text.getConvertToUTF16Size(), 0);
  EXPECT_EQ(text.getConvertToUTF32Size(), 0);
  EXPECT_EQ(text.getConvertToWideCharacterSize(), 0);
  EXPECT_EQ(text.getConvertToMBCSSize("US-ASCII"), 0);
  EXPECT_EQ(text.getConvertToMBCSSize(nullptr), 0);
  EXPECT_EQ(text.getConvertToRestrictedASCIISize(), 0);
}

// The results are unspecified, but nothing may crash.
TEST(VRELStringTest, UninitializedArgumentsDoNotCrash) {
  VRELString const text(L"abc");
  VRELString const gone = Uninitialized();
  EXPECT_NE(text.compareTo(gone), 0);
  EXPECT_NE(text.compareToIgnoreCase(gone), 0);
  EXPECT_FALSE(text.startsWith(gone));
  EXPECT_FALSE(text.endsWith(gone));
  EXPECT_EQ(text.indexOf(gone, 0), -1);
  EXPECT_EQ(text.lastIndexOf(gone, 0), -1);
  EXPECT_EQ(Units(text + gone), u"abc");
  EXPECT_FALSE(VRELString(gone).getIsInitialized());
}

TEST(VRELStringTest, UninitializedConversionsFail) {
  VRELString const text = Uninitialized();
  char bytes[4] = {'x', 'x', 'x', 'x'};
  unsigned short units[4] = {7, 7, 7, 7};
  int codePoints[4] = {7, 7, 7, 7};
  wchar_t wide[4] = {7, 7, 7, 7};
  EXPECT_EQ(text.convertToUTF8(bytes, 4), VREL_E_FAIL);
  EXPECT_EQ(bytes[0], 0);
  EXPECT_EQ(bytes[1], 'x');
  EXPECT_EQ(text.convertToUTF16(units, 4), VREL_E_FAIL);
  EXPECT_EQ(units[0], 0);
  EXPECT_EQ(text.convertToUTF32(codePoints, 4), VREL_E_FAIL);
  EXPECT_EQ(codePoints[0], 0);
  EXPECT_EQ(text.convertToWideCharacter(wide, 4), VREL_E_FAIL);
  EXPECT_EQ(wide[0], 0);
  bytes[0] = 'x';
  EXPECT_EQ(text.convertToMBCS(bytes, 4, "US-ASCII", true), VREL_E_FAIL);
  EXPECT_EQ(bytes[0], 0);
  bytes[0] = 'x';
  EXPECT_EQ(text.convertToRestrictedASCII(bytes, 4), VREL_E_FAIL);
  EXPECT_EQ(bytes[0], 0);
  EXPECT_EQ(bytes[1], 'x');
  char* chars = bytes;
  EXPECT_EQ(VRELStringToChars(text, chars), VREL_E_FAIL);
  EXPECT_EQ(chars, nullptr);
  wchar_t* wideChars = wide;
  EXPECT_EQ(VRELStringToWideChars(text, wideChars), VREL_E_FAIL);
  EXPECT_EQ(wideChars, nullptr);
}

TEST(VRELStringTest, NullBufferIsInvalidArgument) {
  for (VRELString const& text : {VRELString(L"abc"), Uninitialized()}) {
    EXPECT_EQ(text.convertToUTF8(nullptr, 10), VREL_E_INVALID_ARGUMENT);
    EXPECT_EQ(text.convertToUTF16(nullptr, 10), VREL_E_INVALID_ARGUMENT);
    EXPECT_EQ(text.convertToUTF32(nullptr, 10), VREL_E_INVALID_ARGUMENT);
    EXPECT_EQ(text.convertToWideCharacter(nullptr, 10), VREL_E_INVALID_ARGUMENT);
    EXPECT_EQ(text.convertToMBCS(nullptr, 10, "US-ASCII", true), VREL_E_INVALID_ARGUMENT);
    EXPECT_EQ(text.convertToRestrictedASCII(nullptr, 10), VREL_E_INVALID_ARGUMENT);
    EXPECT_EQ(text.convertToRestrictedASCII(nullptr, -1), VREL_E_INVALID_ARGUMENT);
  }
}

TEST(VRELStringTest, CharAtReturnsUnitsAndTerminator) {
  VRELString const text(L"ab");
  EXPECT_EQ(text.charAt(-1), 0xFFFF);
  EXPECT_EQ(text.charAt(0), 'a');
  EXPECT_EQ(text.charAt(1), 'b');
  EXPECT_EQ(text.charAt(2), 0);
  EXPECT_EQ(text.charAt(3), 0xFFFF);
  EXPECT_EQ(text.charAt(INT_MIN), 0xFFFF);
  EXPECT_EQ(text.charAt(INT_MAX), 0xFFFF);
  EXPECT_EQ(VRELString(static_cast<unsigned short>(0xFFFE)).charAt(0), 0xFFFE) << "unsigned";
}

TEST(VRELStringTest, HashIncludesTerminator) {
  std::u16string longText;
  for (int i = 0; i < 500; ++i) longText += static_cast<char16_t>(0x20 + i);
  int negative = 0;
  for (std::u16string const& units : {std::u16string(u""), std::u16string(u"a"), std::u16string(u"A"),
                                      std::u16string(u"TOLERANCE"), std::u16string(u"\U0001F600"), longText}) {
    int const hash = Model(units).hashCode();
    EXPECT_EQ(Text(units).hashCode(), std::abs(hash));
    EXPECT_GE(Text(units).hashCode(), 0);
  }
  std::mt19937 random(20240607);
  for (int round = 0; round < 2000; ++round) {
    std::u16string units;
    for (std::size_t i = random() % 60; i > 0; --i) units += static_cast<char16_t>(1 + random() % 0x2FF);
    int const hash = Model(units).hashCode();
    if (hash < 0) ++negative;
    ASSERT_EQ(Text(units).hashCode(), std::abs(hash));
  }
  EXPECT_GT(negative, 0);
  EXPECT_EQ(VRELHashTraits<VRELString>::Hash(VRELString(L"key")),
            static_cast<unsigned int>(std::abs(Model(u"key").hashCode())));
}

TEST(VRELStringTest, StaticHashAndCompareAgree) {
  EXPECT_EQ(VRELString::hashCode(std::u16string_view()), 1);
  EXPECT_EQ(VRELString::hashCode(u"A"), 65 * 37);
  std::u16string units;
  for (int length = 0; length < 300; ++length) {
    EXPECT_EQ(VRELString::hashCode(units), std::abs(Model(units).hashCode())) << length;
    units += static_cast<char16_t>(u'a' + length * 7 % 50);
  }
  std::u16string_view const within = u"xHubx";
  struct {
    std::u16string_view a;
    std::u16string_view b;
    int order;
  } const cases[] = {
      {{}, {}, 0},
      {within.substr(1, 3), u"hUB", 0},
      {within.substr(1, 3), u"hubs", -1},
      {within.substr(1, 3), u"hu", 1},
      {within.substr(1, 3), u"huc", -1},
      {within.substr(1, 0), u"h", -1},
      {u"h", {}, 1},
      {u"Stra\u00DFe", u"sTRASSE", 0},
      {u"\u00D6l", u"\u00F6L", 0},
      {u"\u00D6", u"\u00D6l", -1},
      {u"a", u"a\u0301", -1},
      {u"\uFFFD", u"\U00010000", -1},
  };
  for (auto const& each : cases) {
    SCOPED_TRACE(VRELString(each.a));
    EXPECT_EQ(VRELString::compareIgnoringCase(each.a, each.b), each.order);
    EXPECT_EQ(VRELString::compareIgnoringCase(each.b, each.a), -each.order);
    EXPECT_EQ(VRELString(each.a).compareToIgnoreCase(VRELString(each.b)), each.order);
  }
}

TEST(VRELStringTest, ReportsInnerZero) {
  EXPECT_TRUE(TextWithZero().getHoldsZero());
  EXPECT_FALSE(VRELString().getHoldsZero());
  EXPECT_FALSE(VRELString(L"ab").getHoldsZero());
  VRELString copy(TextWithZero());
  EXPECT_TRUE(copy.getHoldsZero()) << "moved";
  VRELString const source = TextWithZero();
  copy = source;
  EXPECT_FALSE(copy.getHoldsZero());
  copy = TextWithZero();
  VRELString const plain(L"xyz");
  copy = plain;
  EXPECT_FALSE(copy.getHoldsZero());
  EXPECT_EQ(Units(copy + plain), u"xyzxyz");
}

TEST(VRELStringTest, HashIncludesInnerZero) {
  EXPECT_EQ(TextWithZero().hashCode(), std::abs(Model(std::u16string(u"a\0b", 3)).hashCode()));
}

TEST(VRELStringTest, KeysAreEqualInAnyCase) {
  EXPECT_TRUE(VRELHashTraits<VRELString>::Equal(VRELString(L"Key"), VRELString(L"kEY")));
  EXPECT_FALSE(VRELHashTraits<VRELString>::Equal(VRELString(L"Key"), VRELString(L"Kez")));
  EXPECT_NE(VRELString(L"Key").hashCode(), VRELString(L"key").hashCode());
}

TEST(VRELStringTest, ComparesInCodePointOrder) {
  // Each string is less than the next one.
  std::u16string const ordered[] = {u"",   u"A",      u"AB",     u"B",      u"a",          u"aB",
                                    u"ab", u"\u00E9", u"\uD7FF", u"\uFFFD", u"\U0001F600", u"\U0010FFFF"};
  int const count = static_cast<int>(std::size(ordered));
  for (int i = 0; i < count; ++i) {
    for (int j = 0; j < count; ++j) {
      SCOPED_TRACE(testing::Message() << i << " and " << j);
      VRELString const a = Text(ordered[i]);
      VRELString const b = Text(ordered[j]);
      EXPECT_EQ(Sign(a.compareTo(b)), Sign(i - j));
      EXPECT_EQ(a.equals(b), i == j);
      EXPECT_EQ(a > b, i > j);
      EXPECT_EQ(a < b, i < j);
      EXPECT_EQ(a <= b, i <= j);
    }
  }
}

TEST(VRELStringTest, ComparisonIncludesTerminator) {
  VRELString const text = TextWithZero();
  VRELString const shorter(L"a");
  EXPECT_GT(text.compareTo(shorter), 0);
  EXPECT_LT(shorter.compareTo(text), 0);
  EXPECT_FALSE(shorter.equals(text));
  EXPECT_TRUE(text.equals(TextWithZero()));
  EXPECT_FALSE(text.equalsIgnoreCase(shorter));
}

TEST(VRELStringTest, ComparesFoldedStrings) {
  struct Row {
    std::u16string a;
    std::u16string b;
    int sign;
  };
  Row const rows[] = {
      {u"", u"", 0},
      {u"abc", u"ABC", 0},
      {u"abc", u"ABD", -1},
      {u"ABD", u"abc", 1},
      {u"abc", u"AB", 1},
      {u"\u00C9", u"\u00E9", 0},
      {u"stra\u00DFe", u"STRASSE", 0},
      {u"I", u"i", 0},
      {u"I", u"\u0131", -1},  // no Turkic folding
      {u"\u03A3", u"\u03C2", 0},
      {u"\U00010400", u"\U00010428", 0},
      {u"_", u"A", -1},  // folding produces lower case: 0x5F is below 0x61
      {u"\uFFFD", u"\U0001F600", -1},
  };
  for (Row const& row : rows) {
    VRELString const a = Text(row.a);
    VRELString const b = Text(row.b);
    SCOPED_TRACE(a.toUtf8() + " and " + b.toUtf8());
    EXPECT_EQ(Sign(a.compareToIgnoreCase(b)), row.sign);
    EXPECT_EQ(Sign(b.compareToIgnoreCase(a)), -row.sign);
    EXPECT_EQ(a.equalsIgnoreCase(b), row.sign == 0);
  }
}

TEST(VRELStringTest, FoldsOnlyLettersOfAscii) {
  auto const folded = [](int c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; };
  for (int a = 1; a < 128; ++a) {
    for (int b = 1; b < 128; ++b) {
      ASSERT_EQ(Sign(VRELString(a).compareToIgnoreCase(VRELString(b))), Sign(folded(a) - folded(b)))
          << a << " and " << b;
    }
  }
}

TEST(VRELStringTest, StartsAndEndsWith) {
  struct Row {
    wchar_t const* text;
    wchar_t const* part;
    bool starts;
    bool ends;
  };
  Row const rows[] = {
      {L"abc", L"a", true, false},     {L"abc", L"ab", true, false},    {L"abc", L"abc", true, true},
      {L"abc", L"c", false, true},     {L"abc", L"bc", false, true},    {L"abc", L"b", false, false},
      {L"abc", L"abcd", false, false}, {L"abc", L"xabc", false, false}, {L"abc", L"", false, false},
      {L"", L"", false, false},        {L"", L"a", false, false},       {L"aXa", L"a", true, true},
      {L"abc", L"A", false, false},    {L"abc", L"C", false, false},
  };
  for (Row const& row : rows) {
    VRELString const text(row.text);
    VRELString const part(row.part);
    SCOPED_TRACE(text.toUtf8() + " and " + part.toUtf8());
    EXPECT_EQ(text.startsWith(part), row.starts);
    EXPECT_EQ(text.endsWith(part), row.ends);
  }
  VRELString const self(L"abc");
  EXPECT_TRUE(self.startsWith(self));
  EXPECT_TRUE(self.endsWith(self));
}

TEST(VRELStringTest, StartsAndEndsWithInnerZero) {
  VRELString const text = TextWithZero();
  EXPECT_TRUE(text.startsWith(VRELString(L"a")));
  EXPECT_TRUE(text.endsWith(VRELString(L"b")));
  EXPECT_FALSE(text.startsWith(text)) << "the first three units end at the zero";
  EXPECT_FALSE(text.endsWith(text));
  EXPECT_FALSE(VRELString(L"a").startsWith(text));
  EXPECT_FALSE(VRELString(L"ab").endsWith(text));
}

TEST(VRELStringTest, GetStringLengthStopsAtZero) {
  unsigned short const units[] = {'a', 'b', 0xD83D, 0, 'x', 0};
  int const codePoints[] = {0x1F600, 'b', 0, 'x', 0};
  EXPECT_EQ(VRELString::getStringLength("abc\0d"), 3);
  EXPECT_EQ(VRELString::getStringLength(""), 0);
  EXPECT_EQ(VRELString::getStringLength("\xC3\xA9"), 2);
  EXPECT_EQ(VRELString::getStringLength(units), 3);
  EXPECT_EQ(VRELString::getStringLength(L"abcd\0e"), 4);
  EXPECT_EQ(VRELString::getStringLength(codePoints), 2);
  EXPECT_EQ(VRELString::getStringLength(static_cast<char const*>(nullptr)), 0);
  EXPECT_EQ(VRELString::getStringLength(static_cast<unsigned short const*>(nullptr)), 0);
  EXPECT_EQ(VRELString::getStringLength(static_cast<wchar_t const*>(nullptr)), 0);
  EXPECT_EQ(VRELString::getStringLength(static_cast<int const*>(nullptr)), 0);
}

TEST(VRELStringTest, FindsUnits) {
  VRELString const text(L"abcabc");
  unsigned short const b = 'b';
  EXPECT_EQ(text.indexOf(b), 1);
  EXPECT_EQ(text.indexOf(b, 1), 1);
  EXPECT_EQ(text.indexOf(b, 2), 4);
  EXPECT_EQ(text.indexOf(b, 5), -1);
  EXPECT_EQ(text.indexOf(b, 100), -1);
  EXPECT_EQ(text.indexOf(b, -7), 1);
  EXPECT_EQ(text.lastIndexOf(b), 4);
  EXPECT_EQ(text.lastIndexOf(b, 0), 4) << "start is the beginning of the searched range";
  EXPECT_EQ(text.lastIndexOf(b, 4), 4);
  EXPECT_EQ(text.lastIndexOf(b, 5), -1);
  EXPECT_EQ(text.lastIndexOf(b, -7), 4);
  EXPECT_EQ(text.lastIndexOf(b, 100), -1);
  unsigned short const missing = 'x';
  EXPECT_EQ(text.indexOf(missing), -1);
  EXPECT_EQ(text.lastIndexOf(missing), -1);
}

TEST(VRELStringTest, SearchForZeroFindsTerminator) {
  VRELString const text(L"abc");
  unsigned short const zero = 0;
  EXPECT_EQ(text.indexOf(zero), 3);
  EXPECT_EQ(text.indexOf(zero, 3), 3);
  EXPECT_EQ(text.indexOf(zero, 4), -1);
  EXPECT_EQ(text.lastIndexOf(zero), 3);
  EXPECT_EQ(text.lastIndexOf(zero, 2), 3);
  EXPECT_EQ(VRELString().indexOf(zero), 0);
  EXPECT_EQ(TextWithZero().indexOf(zero), 1);
  EXPECT_EQ(TextWithZero().lastIndexOf(zero), 3);
}

TEST(VRELStringTest, SearchFindsOnlyUnpairedSurrogate) {
  VRELString const text = Text({u'a', char16_t(0xD83D), char16_t(0xDE00), char16_t(0xD83D)});
  unsigned short const lead = 0xD83D;
  unsigned short const trail = 0xDE00;
  EXPECT_EQ(text.indexOf(lead), 3);
  EXPECT_EQ(text.lastIndexOf(lead), 3);
  EXPECT_EQ(text.indexOf(trail), -1);
  EXPECT_EQ(text.indexOf(VRELString(lead), 0), 3);
  EXPECT_EQ(text.indexOf(VRELString(0x1F600), 0), 1);
}

TEST(VRELStringTest, FindsStrings) {
  VRELString const text(L"abcabcab");
  VRELString const ab(L"ab");
  EXPECT_EQ(text.indexOf(ab, 0), 0);
  EXPECT_EQ(text.indexOf(ab, 1), 3);
  EXPECT_EQ(text.indexOf(ab, 6), 6);
  EXPECT_EQ(text.indexOf(ab, 7), -1);
  EXPECT_EQ(text.indexOf(ab, 100), -1);
  EXPECT_EQ(text.indexOf(ab, -3), 0);
  EXPECT_EQ(text.lastIndexOf(ab, 0), 6);
  EXPECT_EQ(text.lastIndexOf(ab, 6), 6);
  EXPECT_EQ(text.lastIndexOf(ab, 7), -1);
  EXPECT_EQ(text.lastIndexOf(ab, -3), 6);
  EXPECT_EQ(text.indexOf(VRELString(L"ac"), 0), -1);
  EXPECT_EQ(text.lastIndexOf(VRELString(L"ac"), 0), -1);
  EXPECT_EQ(text.indexOf(VRELString(L"abcabcabc"), 0), -1);
  // A search changes neither string.
  EXPECT_EQ(text.charAt(8), 0);
  EXPECT_EQ(ab.charAt(2), 0);
  EXPECT_EQ(text.getConvertToUTF16Size(), 9);
  EXPECT_EQ(ab.getConvertToUTF16Size(), 3);
}

TEST(VRELStringTest, StringSearchIgnoresTerminator) {
  VRELString const sought("a+AAA-", "UTF-7");  // "a" and U+0000
  ASSERT_EQ(sought.length(), 2);
  EXPECT_EQ(VRELString(L"ba").indexOf(sought, 0), -1);
  EXPECT_EQ(VRELString(L"ba").indexOf(sought, 1), -1);
  EXPECT_EQ(VRELString(L"ba").lastIndexOf(sought, 0), -1);
  EXPECT_EQ(VRELString(L"ba").lastIndexOf(sought, 1), -1);
  EXPECT_EQ(TextWithZero().indexOf(sought, 0), 0);
  EXPECT_EQ(TextWithZero().lastIndexOf(sought, 0), 0);
}

TEST(VRELStringTest, EmptyStringIsFoundAtEnd) {
  VRELString const text(L"abc");
  VRELString const empty;
  EXPECT_EQ(text.indexOf(empty, -1), 3);
  EXPECT_EQ(text.indexOf(empty, 0), 3);
  EXPECT_EQ(text.indexOf(empty, 1), 3);
  EXPECT_EQ(text.indexOf(empty, 2), 3);
  EXPECT_EQ(text.indexOf(empty, 3), -1);
  EXPECT_EQ(text.indexOf(empty, 4), -1);
  EXPECT_EQ(text.lastIndexOf(empty, -1), 3);
  EXPECT_EQ(text.lastIndexOf(empty, 0), 3);
  EXPECT_EQ(text.lastIndexOf(empty, 3), 3);
  EXPECT_EQ(text.lastIndexOf(empty, 4), -1);
  EXPECT_EQ(empty.indexOf(empty, 0), -1);
  EXPECT_EQ(empty.lastIndexOf(empty, 0), 0);
}

TEST(VRELStringTest, SearchForItself) {
  VRELString const text(L"abc");
  text.indexOf(text, 0);
  text.lastIndexOf(text, 0);
  EXPECT_EQ(Units(text), u"abc");
  EXPECT_EQ(text.charAt(3), 0);
  EXPECT_EQ(text.getConvertToUTF16Size(), 4);
}

TEST(VRELStringTest, Concatenates) {
  VRELString const a("ab");
  VRELString const b(L"\u00E9\U0001F600");
  VRELString const joined = a + b;
  EXPECT_EQ(Units(joined), u"ab\u00E9\U0001F600");
  EXPECT_EQ(joined.length(), 5);
  EXPECT_FALSE(joined.getBadConversion());
  EXPECT_EQ(Units(a + VRELString()), u"ab");
  EXPECT_EQ(Units(VRELString() + a), u"ab");
  EXPECT_EQ((VRELString() + VRELString()).length(), 0);
  EXPECT_EQ(Units(a + a), u"abab");
  EXPECT_EQ(Units(a), u"ab");
  EXPECT_EQ(Units(TextWithZero() + a), u"a");
  EXPECT_EQ(Units(a + TextWithZero()), u"aba");
}

TEST(VRELStringTest, Substring) {
  struct Row {
    int start;
    int end;
    std::u16string units;
  };
  Row const rows[] = {
      {0, 3, u"abc"},          {0, 0, u""},   {1, 2, u"b"},   {1, 3, u"bc"}, {2, 1, u""},   {-5, 100, u"abc"},
      {-5, 2, u"ab"},          {3, 3, u""},   {3, 10, u""},   {4, 10, u""},  {-5, -1, u""}, {INT_MIN, INT_MAX, u"abc"},
      {INT_MAX, INT_MIN, u""}, {-1, -5, u""}, {100, 50, u""},
  };
  VRELString const text("abc");
  for (Row const& row : rows) {
    SCOPED_TRACE(testing::Message() << row.start << " to " << row.end);
    EXPECT_EQ(Units(text.substring(row.start, row.end)), row.units);
    EXPECT_TRUE(text.substring(row.start, row.end).getIsInitialized());
    EXPECT_FALSE(text.substring(row.start, row.end).getBadConversion());
  }
  EXPECT_EQ(Units(text.substring(0)), u"abc");
  EXPECT_EQ(Units(text.substring(2)), u"c");
  EXPECT_EQ(Units(text.substring(3)), u"");
  EXPECT_EQ(Units(text.substring(4)), u"");
  EXPECT_EQ(Units(text.substring(-1)), u"abc");
  VRELString const pair(0x1F600);
  EXPECT_EQ(pair.substring(0, 1).charAt(0), 0xD83D) << "units, not code points";
  EXPECT_EQ(pair.substring(1).charAt(0), 0xDE00);
  EXPECT_EQ(Units(TextWithZero().substring(0)), u"a");
  EXPECT_EQ(Units(TextWithZero().substring(1)), u"");
  EXPECT_EQ(Units(TextWithZero().substring(2)), u"b");
}

TEST(VRELStringTest, ReplacesUnits) {
  VRELString const text("abcabc");
  EXPECT_EQ(Units(text.replace('a', 'x')), u"xbcxbc");
  EXPECT_EQ(Units(text.replace('a', 'a')), u"abcabc");
  EXPECT_EQ(Units(text.replace('x', 'y')), u"abcabc");
  EXPECT_EQ(Units(text.replace('c', 0x00E9)), u"ab\u00E9ab\u00E9");
  EXPECT_FALSE(text.replace('a', 'x').getBadConversion());
  EXPECT_FALSE(text.replace('x', 'y').getBadConversion());
  EXPECT_EQ(Units(text), u"abcabc");
  VRELString const ab(L"ab");
  EXPECT_EQ(Units(ab.replace(0, 'x')), u"abx") << "the terminator is a unit like the others";
  EXPECT_EQ(ab.replace(0, 'x').charAt(3), 0);
  EXPECT_EQ(Units(ab.replace(0, 0)), u"ab");
  EXPECT_EQ(Units(ab.replace('b', 0)), u"a") << "a new zero ends the text";
  EXPECT_EQ(Units(ab.replace('a', 0)), u"");
  EXPECT_EQ(Units(VRELString().replace(0, 'x')), u"x");
  EXPECT_EQ(Units(TextWithZero().replace('a', 'x')), u"x");
  // Half of a pair is not replaced.
  EXPECT_EQ(Units(VRELString(0x1F600).replace(0xD83D, 'x')), u"\U0001F600");
  EXPECT_EQ(Units(VRELString(static_cast<unsigned short>(0xD83D)).replace(0xD83D, 'x')), u"x");
}

TEST(VRELStringTest, ConvertsToUtf8) {
  VRELString const letter(0xE9);
  EXPECT_EQ(letter.getConvertToUTF8Size(), 3);
  char bytes[8] = "xxxxxxx";
  EXPECT_EQ(letter.convertToUTF8(bytes, 3), 0);
  EXPECT_STREQ(bytes, "\xC3\xA9");
  EXPECT_EQ(bytes[3], 'x');
  for (int size : {2, 1, -1}) {
    SCOPED_TRACE(size);
    std::strcpy(bytes, "xxxxxxx");
    EXPECT_EQ(letter.convertToUTF8(bytes, size), VREL_E_FAIL);
    EXPECT_EQ(bytes[0], 0);
    EXPECT_EQ(bytes[3], 'x');
  }
  VRELString const text(L"a\u20AC\U0001F600");
  EXPECT_EQ(text.getConvertToUTF8Size(), 9);
  char more[9];
  EXPECT_EQ(text.convertToUTF8(more, 9), 0);
  EXPECT_STREQ(more, "a\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(VRELString().getConvertToUTF8Size(), 1);
  EXPECT_EQ(VRELString().convertToUTF8(bytes, 1), 0);
  EXPECT_STREQ(bytes, "");
}

TEST(VRELStringTest, AsciiNeedsSpaceForTerminator) {
  VRELString const text(L"abc");
  EXPECT_EQ(text.getConvertToUTF8Size(), 4);
  EXPECT_EQ(text.getConvertToMBCSSize("US-ASCII"), 4);
  EXPECT_EQ(text.getConvertToMBCSSize(nullptr), 4);
  for (int size : {4, 3, 2, 0, -1}) {
    SCOPED_TRACE(size);
    VRINResult const expected = size == 4 ? VRINResult(0) : VRINResult(VREL_E_FAIL);
    std::string const content = size == 4 ? std::string("abc\0xx", 6) : std::string("\0xxxxx", 6);
    std::string bytes(6, 'x');
    EXPECT_EQ(text.convertToUTF8(bytes.data(), size), expected);
    EXPECT_EQ(bytes, content);
    for (char const* codepage : {static_cast<char const*>(nullptr), "US-ASCII"}) {
      bytes.assign(6, 'x');
      EXPECT_EQ(text.convertToMBCS(bytes.data(), size, codepage, false), expected);
      EXPECT_EQ(bytes, content);
    }
  }
}

TEST(VRELStringTest, ConvertsToUtf16) {
  VRELString const text(L"a\U0001F600");
  EXPECT_EQ(text.getConvertToUTF16Size(), 4);
  unsigned short units[6] = {7, 7, 7, 7, 7, 7};
  EXPECT_EQ(text.convertToUTF16(units, 4), 0);
  unsigned short const expected[6] = {'a', 0xD83D, 0xDE00, 0, 7, 7};
  EXPECT_TRUE(std::equal(units, units + 6, expected));
  for (int size : {3, 1, -1}) {
    SCOPED_TRACE(size);
    units[0] = units[1] = 7;
    EXPECT_EQ(text.convertToUTF16(units, size), VREL_E_FAIL);
    EXPECT_EQ(units[0], 0);
    EXPECT_EQ(units[1], 7);
  }
  EXPECT_EQ(VRELString().getConvertToUTF16Size(), 1);
  EXPECT_EQ(VRELString().convertToUTF16(units, 1), 0);
  EXPECT_EQ(units[0], 0);
  // All units are converted, inner zeros too.
  EXPECT_EQ(TextWithZero().getConvertToUTF16Size(), 4);
  EXPECT_EQ(TextWithZero().convertToUTF16(units, 6), 0);
  unsigned short const withZero[4] = {'a', 0, 'b', 0};
  EXPECT_TRUE(std::equal(withZero, withZero + 4, units));
}

TEST(VRELStringTest, ConvertsToUtf32) {
  VRELString const text(L"a\U0001F600");
  EXPECT_EQ(text.getConvertToUTF32Size(), 3);
  int units[4] = {7, 7, 7, 7};
  EXPECT_EQ(text.convertToUTF32(units, 3), 0);
  int const expected[4] = {'a', 0x1F600, 0, 7};
  EXPECT_TRUE(std::equal(units, units + 4, expected));
  for (int size : {2, 1, -1}) {
    SCOPED_TRACE(size);
    units[0] = 7;
    EXPECT_EQ(text.convertToUTF32(units, size), VREL_E_FAIL);
    EXPECT_EQ(units[0], 0);
  }
  EXPECT_EQ(VRELString().getConvertToUTF32Size(), 1);
  EXPECT_EQ(VRELString().convertToUTF32(units, 1), 0);
}

TEST(VRELStringTest, ConvertsToWideCharacters) {
  VRELString const text(L"a\U0001F600");
  EXPECT_EQ(text.getConvertToWideCharacterSize(), 3);
  wchar_t units[4] = {7, 7, 7, 7};
  EXPECT_EQ(text.convertToWideCharacter(units, 3), 0);
  EXPECT_EQ(std::wstring(units), L"a\U0001F600");
  EXPECT_EQ(units[3], 7);
  for (int size : {2, 1, -1}) {
    SCOPED_TRACE(size);
    units[0] = 7;
    EXPECT_EQ(text.convertToWideCharacter(units, size), VREL_E_FAIL);
    EXPECT_EQ(units[0], 0);
  }
  EXPECT_EQ(VRELString().getConvertToWideCharacterSize(), 1);
  EXPECT_EQ(VRELString().convertToWideCharacter(units, 1), 0);
}

TEST(VRELStringTest, UnpairedSurrogatesFail) {
  VRELString const text = Text({u'a', char16_t(0xDC00)});
  char bytes[16];
  int units[16];
  wchar_t wide[16];
  EXPECT_GT(text.getConvertToUTF8Size(), 0);
  EXPECT_GT(text.getConvertToUTF32Size(), 0);
  EXPECT_GT(text.getConvertToWideCharacterSize(), 0);
  EXPECT_EQ(text.convertToUTF8(bytes, 16), VREL_E_FAIL);
  EXPECT_EQ(bytes[0], 0);
  EXPECT_EQ(text.convertToUTF32(units, 16), VREL_E_FAIL);
  EXPECT_EQ(units[0], 0);
  EXPECT_EQ(text.convertToWideCharacter(wide, 16), VREL_E_FAIL);
  EXPECT_EQ(wide[0], 0);
  wchar_t* chars = wide;
  EXPECT_EQ(VRELStringToWideChars(text, chars), VREL_E_FAIL);
  EXPECT_EQ(chars, nullptr);
}

TEST(VRELStringTest, ConversionsEndAtInnerZero) {
  VRELString const text = TextWithZero();
  EXPECT_EQ(text.getConvertToUTF8Size(), 2);
  EXPECT_EQ(text.getConvertToUTF32Size(), 2);
  EXPECT_EQ(text.getConvertToWideCharacterSize(), 2);
  EXPECT_EQ(text.getConvertToMBCSSize("US-ASCII"), 2);
  char bytes[4];
  EXPECT_EQ(text.convertToUTF8(bytes, 2), 0);
  EXPECT_STREQ(bytes, "a");
  EXPECT_EQ(text.convertToMBCS(bytes, 2, "US-ASCII", false), 0);
  EXPECT_STREQ(bytes, "a");
}

TEST(VRELStringTest, ConvertsToCodePage) {
  struct Row {
    char const* codepage;
    bool underscores;
    std::string bytes;
  };
  VRELString const text(L"a\u00E9\u20AC\U0001F600z");
  Row const rows[] = {
      {"US-ASCII", false, "a\x1A\x1A\x1Az"},     {"US-ASCII", true, "a___z"},
      {"ISO-8859-1", false, "a\xE9\x1A\x1Az"},   {"ISO-8859-1", true, "a\xE9__z"},
      {"windows-1252", false, "a\xE9\x80\x1Az"}, {"UTF-8", false, "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.codepage);
    int const size = text.getConvertToMBCSSize(row.codepage);
    ASSERT_EQ(size, static_cast<int>(row.bytes.size()) + 1);
    std::string buffer(static_cast<std::size_t>(size) + 1, 'x');
    EXPECT_EQ(text.convertToMBCS(buffer.data(), size, row.codepage, row.underscores), 0);
    EXPECT_EQ(buffer, row.bytes + '\0' + 'x');
    for (int tooSmall : {size - 1, size - 2, 1, -1}) {
      SCOPED_TRACE(tooSmall);
      std::fill(buffer.begin(), buffer.end(), 'x');
      EXPECT_EQ(text.convertToMBCS(buffer.data(), tooSmall, row.codepage, row.underscores), VREL_E_FAIL);
      EXPECT_EQ(buffer[0], 0);
    }
  }
  char byte = 'x';
  EXPECT_EQ(VRELString().getConvertToMBCSSize("US-ASCII"), 1);
  EXPECT_EQ(VRELString().convertToMBCS(&byte, 1, "US-ASCII", true), 0);
  EXPECT_EQ(byte, 0);
}

TEST(VRELStringTest, UnderscoresReplaceWholeBuffer) {
  char bytes[8] = {'x', 'x', 'x', 'x', '\x1A', 'x', '\x1A', '\x1A'};
  EXPECT_EQ(VRELString(L"a\x1A").convertToMBCS(bytes, 7, "US-ASCII", true), 0);
  EXPECT_EQ(std::string(bytes, 8), std::string("a_\0x_x_\x1A", 8));
  // Each byte of a substitution sequence is replaced anywhere: U+FFFD is EF BF BD in UTF-8.
  char utf8[8] = {'x', 'x', 'x', 'x', 'x', '\xBF', 'x', 'x'};
  EXPECT_EQ(VRELString(L"\u00EF\u00FD").convertToMBCS(utf8, 8, "UTF-8", true), 0);
  EXPECT_EQ(std::string(utf8, 8), std::string("\xC3\xAF\xC3_\0_xx", 8));
  char plain[4] = {'x', 'x', '\x1A', 'x'};
  EXPECT_EQ(VRELString(L"a").convertToMBCS(plain, 4, "US-ASCII", false), 0);
  EXPECT_EQ(plain[2], '\x1A');
}

TEST(VRELStringTest, FailedConversionSubstitutesNothing) {
  char bytes[4] = {'x', 'x', '\x1A', '\x1A'};
  EXPECT_EQ(Uninitialized().convertToMBCS(bytes, 4, "US-ASCII", true), VREL_E_FAIL);
  EXPECT_EQ(bytes[2], '\x1A');
}

TEST(VRELStringTest, ConvertsToRestrictedAscii) {
  std::string const variant = "\n!#$@[\\]^`{|}~";
  for (int c = 1; c < 128; ++c) {
    SCOPED_TRACE(c);
    bool const underscore = c == 0x1A || variant.find(static_cast<char>(c)) != std::string::npos;
    char bytes[2];
    EXPECT_EQ(VRELString(c).getConvertToRestrictedASCIISize(), 2);
    EXPECT_EQ(VRELString(c).convertToRestrictedASCII(bytes, 2), 0);
    EXPECT_EQ(bytes[0], underscore ? '_' : static_cast<char>(c));
    EXPECT_EQ(bytes[1], 0);
  }
  char bytes[8];
  EXPECT_EQ(VRELString(L"a#b").convertToRestrictedASCII(bytes, 4), 0);
  EXPECT_STREQ(bytes, "a_b");
  EXPECT_EQ(VRELString(L"\u00E9\U0001F600c").convertToRestrictedASCII(bytes, 4), 0);
  EXPECT_STREQ(bytes, "__c");
  EXPECT_EQ(VRELString().convertToRestrictedASCII(bytes, 1), 0);
  EXPECT_STREQ(bytes, "");
}

TEST(VRELStringTest, RestrictedAsciiFailsIfTooLong) {
  VRELString const text(L"abc");
  for (int size : {3, 1, 0, -1, INT_MIN}) {
    SCOPED_TRACE(size);
    char bytes[5] = "xxxx";
    EXPECT_EQ(text.convertToRestrictedASCII(bytes, size), VREL_E_FAIL);
    EXPECT_EQ(bytes[0], 0);
    EXPECT_EQ(bytes[1], 'x');
    std::strcpy(bytes, "xxxx");
    EXPECT_EQ(VRELString(L"\u00E9bc").convertToRestrictedASCII(bytes, size), VREL_E_FAIL);
    EXPECT_EQ(std::string(bytes, 4), std::string("\0xxx", 4));
  }
}

TEST(VRELStringTest, RestrictedAsciiFillsWithZeros) {
  char bytes[6] = {'x', 'x', '#', '\x1A', 'x', 'x'};
  EXPECT_EQ(VRELString(L"a").convertToRestrictedASCII(bytes, 5), 0);
  EXPECT_EQ(std::string(bytes, 6), std::string("a\0\0\0\0x", 6));
}

TEST(VRELStringTest, AllocatesBuffers) {
  VRELString const text(L"abc");
  char* chars = nullptr;
  EXPECT_EQ(VRELStringToChars(text, chars), 0);
  EXPECT_STREQ(chars, "abc");
  EXPECT_EQ(VRELReleaseChars(chars), 0);
  EXPECT_EQ(chars, nullptr);
  EXPECT_EQ(VRELReleaseChars(chars), 0);
  EXPECT_EQ(chars, nullptr);
  wchar_t* wide = nullptr;
  EXPECT_EQ(VRELStringToWideChars(VRELString(L"a\U0001F600"), wide), 0);
  EXPECT_EQ(std::wstring(wide), L"a\U0001F600");
  EXPECT_EQ(VRELReleaseWideChars(wide), 0);
  EXPECT_EQ(wide, nullptr);
  EXPECT_EQ(VRELReleaseWideChars(wide), 0);
  EXPECT_EQ(wide, nullptr);
  EXPECT_EQ(VRELStringToChars(VRELString(), chars), 0);
  EXPECT_STREQ(chars, "");
  VRELReleaseChars(chars);
}

void LimitMemory(std::size_t moreBytes) {
  std::size_t pages = 0;
  if (std::FILE* const file = std::fopen("/proc/self/statm", "r")) {
    if (std::fscanf(file, "%zu", &pages) != 1) std::exit(100);
    std::fclose(file);
  }
  rlimit const limit = {pages * 4096 + moreBytes, pages * 4096 + moreBytes};
  if (setrlimit(RLIMIT_AS, &limit) != 0) std::exit(100);
}

TEST(VRELStringTest, OutOfMemoryStaysUninitialized) {
  if (!LIMITS_OF_MEMORY_WORK) GTEST_SKIP() << "the sanitizer needs the address space itself";
  ChildResult const child = RunInChildWithoutTeardown([] {
    std::size_t const count = 32 << 20;
    std::vector<char> const bytes = [&] {
      std::vector<char> made(count + 1, 'a');
      made.back() = 0;
      return made;
    }();
    std::vector<unsigned short> units(count + 1, 'a');
    std::vector<int> codePoints(count + 1, 'a');
    std::vector<wchar_t> wide(count + 1, L'a');
    units.back() = 0;
    codePoints.back() = 0;
    wide.back() = 0;
    VRELString large(units.data());
    VRELString const dash(L"-");
    if (large.length() != static_cast<int>(count)) return 1;
    LimitMemory(16 << 20);
    VRELString const failed[] = {VRELString(bytes.data(), "US-ASCII"), VRELString(bytes.data(), "ISO-8859-1"),
                                 VRELString(units.data()), VRELString(codePoints.data()), VRELString(wide.data())};
    int status = 10;
    for (VRELString const& text : failed) {
      if (text.getIsInitialized() || text.length() != -1) return status;
      ++status;
    }
    for (VRELString const& text : {large + dash, large.substring(1), large.replace('a', 'b')}) {
      if (text.length() > 0) return status;
      ++status;
    }
    char byte = 'x';
    char* chars = &byte;
    if (VRELStringToChars(large, chars) == 0 || chars != nullptr) return 32;
    wchar_t* wideChars = wide.data();
    if (VRELStringToWideChars(large, wideChars) == 0 || wideChars != nullptr) return 33;
    return large.length() == static_cast<int>(count) ? 0 : 34;
  });
  EXPECT_EQ(child.signal, 0) << child.errors;
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
}

TEST(VRELStringTest, HashEqualsIcuAtEveryLength) {
  std::mt19937 random(37);
  std::u16string units;
  for (int length = 0; length <= 200; ++length) {
    SCOPED_TRACE(length);
    EXPECT_EQ(Text(units).hashCode(), std::abs(Model(units).hashCode()));
    units += static_cast<char16_t>(1 + random() % 0xD7FF);
  }
}

TEST(VRELStringTest, FunctionsDoNotThrowWithoutMemory) {
  if (!LIMITS_OF_MEMORY_WORK) GTEST_SKIP() << "the sanitizer needs the address space itself";
  ChildResult const child = RunInChildWithoutTeardown([] {
    VRELString const before(L"before");
    VRELString const part(L"for");
    VRELString const unnamed("unnamed");
    if (before.getConvertToMBCSSize("US-ASCII") != 7) return 1;
    // 26 units and the terminator are the most that the object itself has space for.
    VRELString full(L"abcdefghijklmnopqrstuvwxyz");
    VRELString small(L"a");
    std::vector<VRELString> const held(VRELStringBlocks::kCapacity, before);  // uses up the free blocks
    LimitMemory(0);
    // In small steps at the end: freed blocks are kept in lists, one for each size.
    for (std::size_t size = 1 << 20; size >= 16; size -= size > 2048 ? size / 2 : 16) {
      void* volatile taken = nullptr;  // prevents the compiler from removing the calls
      do {
        taken = std::malloc(size);
      } while (taken != nullptr);
    }
    if (!VRELString().getIsInitialized()) return 2;  // the empty string needs no memory
    VRELString const failed[] = {VRELString(5),
                                 VRELString(static_cast<unsigned short>(5)),
                                 VRELString(L"wide"),
                                 VRELString("bytes"),
                                 VRELString("bytes", "US-ASCII"),
                                 VRELString(u"utf16"),
                                 VRELString(std::string_view("utf8")),
                                 VRELString(std::wstring_view(L"wide")),
                                 VRELString(before)};
    int status = 10;
    for (VRELString const& text : failed) {
      if (text.getIsInitialized()) return status;
      ++status;
    }
    if ((before + before).length() > 0 || before.substring(1).length() > 0 || before.replace('b', 'x').length() > 0) {
      return 30;
    }
    int const failures = VRELString::getFailureCount();
    if ((full += part).getIsInitialized() || VRELString::getFailureCount() != failures + 1) return 37;
    if ((small += part).length() != 4 || (small += VRELString()).length() != 4) return 38;
    char bytes[16] = "x";
    if (before.convertToUTF8(bytes, 16) != 0 || before.indexOf(part, 0) != 2) return 31;
    // No converter can be opened.
    if (before.getConvertToMBCSSize("Shift_JIS") != 0) return 32;
    bytes[0] = 'x';
    if (before.convertToMBCS(bytes, 16, "Shift_JIS", true) != VREL_E_UNEXPECTED || bytes[0] != 0) return 33;
    char* chars = bytes;
    if (VRELStringToChars(before, chars).IsSuccess() || chars != nullptr) return 35;
    wchar_t wide = 0;
    wchar_t* wideChars = &wide;
    if (VRELStringToWideChars(before, wideChars).IsSuccess() || wideChars != nullptr) return 36;
    return 0;
  });
  EXPECT_EQ(child.signal, 0) << child.errors;
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
}

// Random strings of few different units, so that matches are frequent.
class RandomTexts {
 public:
  std::u16string Next(unsigned maximum) {
    static char16_t const units[] = {
        u'a', u'b', u'A', u'B', u'\u00E9', char16_t(0xFFFD), char16_t(0xD83D), char16_t(0xDE00)};
    std::u16string text;
    for (std::size_t count = random() % (maximum + 1); count > 0; --count) text += units[random() % std::size(units)];
    return text;
  }
  int Index(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit + 6)) - 3; }
  char16_t Unit() {
    std::u16string const text = Next(1);
    return text.empty() ? u'\0' : text[0];
  }

 private:
  std::mt19937 random{1234567};
};

icu::UnicodeString WithoutTerminator(std::u16string const& units) {
  return icu::UnicodeString(units.c_str(), static_cast<int>(units.size()));
}

TEST(VRELStringTest, EqualsIcuOnRandomStrings) {
  RandomTexts random;
  for (int round = 0; round < 20000; ++round) {
    std::u16string const a = random.Next(12);
    std::u16string const b = random.Next(3);
    VRELString const text = Text(a);
    VRELString const other = Text(b);
    icu::UnicodeString const modelText = Model(a);
    icu::UnicodeString const modelOther = Model(b);
    int const length = static_cast<int>(a.size());
    int const start = random.Index(length);
    int const end = random.Index(length);
    SCOPED_TRACE(testing::Message() << "round " << round << " start " << start << " end " << end);

    ASSERT_EQ(Sign(text.compareTo(other)), Sign(modelText.compareCodePointOrder(modelOther)));
    ASSERT_EQ(Sign(text.compareToIgnoreCase(other)),
              Sign(modelText.caseCompare(modelOther, U_COMPARE_CODE_POINT_ORDER)));
    ASSERT_EQ(text.hashCode(), std::abs(modelText.hashCode()));

    int const first = b.empty() && start < length ? length : WithoutTerminator(a).indexOf(WithoutTerminator(b), start);
    ASSERT_EQ(text.indexOf(other, start), first);
    int const last =
        b.empty() && start <= length ? length : WithoutTerminator(a).lastIndexOf(WithoutTerminator(b), start);
    ASSERT_EQ(text.lastIndexOf(other, start), last);

    char16_t const unit = random.Unit();
    ASSERT_EQ(text.indexOf(unit), modelText.indexOf(unit));
    ASSERT_EQ(text.indexOf(unit, start), modelText.indexOf(unit, start));
    ASSERT_EQ(text.lastIndexOf(unit), modelText.lastIndexOf(unit));
    ASSERT_EQ(text.lastIndexOf(unit, start), modelText.lastIndexOf(unit, start));

    int const from = std::max(start, 0);
    int const to = std::min(end, length);
    std::u16string const cut =
        to > from ? a.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from)) : std::u16string();
    ASSERT_EQ(Units(text.substring(start, end)), cut);
    ASSERT_EQ(Units(text + other), a + b);
    ASSERT_EQ(text.startsWith(other), !b.empty() && a.compare(0, b.size(), b) == 0);
    ASSERT_EQ(text.endsWith(other),
              !b.empty() && a.size() >= b.size() && a.compare(a.size() - b.size(), b.size(), b) == 0);

    char16_t const replacement = random.Unit();
    icu::UnicodeString replaced = modelText;
    replaced.findAndReplace(icu::UnicodeString(unit), icu::UnicodeString(replacement));
    std::u16string expected(replaced.getBuffer(), static_cast<std::size_t>(replaced.length()));
    expected.resize(std::min(expected.find(u'\0'), expected.size()));
    ASSERT_EQ(Units(text.replace(unit, replacement)), expected);
  }
}

}  // namespace
