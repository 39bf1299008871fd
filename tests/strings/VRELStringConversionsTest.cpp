#include "VRELStringConversions.h"

#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "ChildProcess.h"
#include "TurkishLocale.h"

namespace {

constexpr char const* ascii = VRELString::CODEPAGE_NAME_ASCII;

VRELString Uninitialized() {
  VRELString text;
  VRELString const taken(std::move(text));
  return text;
}

VRELString Utf16(std::u16string const& units) {
  return VRELString(std::u16string_view(units));
}

TEST(VRELStringFromTest, Double) {
  struct Row {
    double value;
    char const* text;
  };
  for (Row const& row : {Row{1.5, "1.500000"}, Row{0.0, "0.000000"}, Row{-0.0, "-0.000000"}, Row{1e-7, "0.000000"},
                         Row{-2.0 / 3.0, "-0.666667"}, Row{1e15, "1000000000000000.000000"},
                         Row{std::numeric_limits<double>::infinity(), "inf"}}) {
    VRELString const text = VRELStringFromDouble(row.value);
    EXPECT_EQ(text.toUtf8(), row.text);
    EXPECT_TRUE(text.getBadConversion());
  }
}

TEST(VRELStringFromTest, HugeDoubleIsTruncated) {
  VRELString const text = VRELStringFromDouble(1e308);
  EXPECT_EQ(text.length(), 254);
  EXPECT_EQ(text.toUtf8().substr(0, 20), "10000000000000000109");
}

TEST(VRELStringFromTest, Integers) {
  EXPECT_EQ(VRELStringFromInteger(-3).toUtf8(), "-3");
  EXPECT_EQ(VRELStringFromInteger(0).toUtf8(), "0");
  EXPECT_EQ(VRELStringFromInteger(INT_MIN).toUtf8(), "-2147483648");
  EXPECT_EQ(VRELStringFromInteger(INT_MAX).toUtf8(), "2147483647");
  EXPECT_EQ(VRELStringFromULong(0).toUtf8(), "0");
  EXPECT_EQ(VRELStringFromULong(ULONG_MAX).toUtf8(), "18446744073709551615");
  EXPECT_TRUE(VRELStringFromInteger(1).getBadConversion());
  EXPECT_TRUE(VRELStringFromULong(1).getBadConversion());
}

TEST(VRELStringFromTest, Bool) {
  EXPECT_EQ(VRELStringFromBool(true).toUtf8(), "true");
  EXPECT_EQ(VRELStringFromBool(false).toUtf8(), "false");
  EXPECT_FALSE(VRELStringFromBool(true).getBadConversion());
}

TEST(VRELStringFromTest, UnicodeWideCharacters) {
  EXPECT_EQ(VRELStringFromUnicodeWChars(L"a\u00E9\U0001F529").toUtf16(), u"a\u00E9\U0001F529");
  EXPECT_FALSE(VRELStringFromUnicodeWChars(L"a").getBadConversion());
  EXPECT_EQ(VRELStringFromUnicodeWChars(nullptr).length(), 0);
  wchar_t const surrogate[] = {L'a', static_cast<wchar_t>(0xD800), 0};
  EXPECT_EQ(VRELStringFromUnicodeWChars(surrogate).length(), 0);
  EXPECT_TRUE(VRELStringFromUnicodeWChars(surrogate).getBadConversion());
}

TEST(VRELStringEqualsIgnoreCaseTest, FoldsBothSides) {
  struct Row {
    char16_t const* a;
    char16_t const* b;
    bool expected;
  };
  for (Row const& row :
       {Row{u"Step", u"sTEP", true}, Row{u"AZ", u"az", true}, Row{u"", u"", true}, Row{u"a", u"", false},
        Row{u"a\u00E9", u"a", false}, Row{u"\u00C9t\u00C9", u"\u00E9T\u00E9", true}, Row{u"\u00E9", u"\u00E8", false},
        Row{u"stra\u00DFe", u"STRASSE", true}, Row{u"\uFB00", u"FF", true}, Row{u"\u212A", u"k", true},
        Row{u"k\u0130", u"ki", false}, Row{u"@", u"`", false}, Row{u"\u03A3", u"\u03C2", true},
        Row{u"\U00010400", u"\U00010428", true}}) {
    EXPECT_EQ(VRELStringEqualsIgnoreCase(row.a, row.b), row.expected) << VRELString(std::u16string_view(row.a));
    EXPECT_EQ(VRELStringEqualsIgnoreCase(row.b, row.a), row.expected) << VRELString(std::u16string_view(row.b));
  }
}

TEST(VRELStringIsWordTest, ComparesWithoutCase) {
  struct Row {
    wchar_t const* text;
    char16_t const* word;
    bool expected;
  };
  for (Row const& row :
       {Row{L"kilometer", u"KiloMeter", true}, Row{L"\u212Aiometer", u"kiometer", true}, Row{L"o\uFB00", u"OFF", true},
        Row{L"", u"", true}, Row{L"km", u"k", false}, Row{L"k", u"km", false}, Row{L"k\u00E9", u"km", false},
        Row{L"@", u"`", false}, Row{L"[", u"{", false}}) {
    EXPECT_EQ(VRELStringIsWord(VRELString(row.text), row.word), row.expected) << VRELString(row.text);
  }
  EXPECT_FALSE(VRELStringIsWord(Uninitialized(), u""));
}

TEST(VRELStringToBoolTest, AcceptsSixWordsInAnyCase) {
  struct Row {
    wchar_t const* text;
    bool value;
  };
  for (Row const& row :
       {Row{L"Yes", true}, Row{L"yes", true}, Row{L"YES", true}, Row{L"True", true}, Row{L"TRUE", true},
        Row{L"tRuE", true}, Row{L"On", true}, Row{L"on", true}, Row{L"No", false}, Row{L"nO", false},
        Row{L"False", false}, Row{L"FALSE", false}, Row{L"Off", false}, Row{L"off", false},
        // Characters that fold to ASCII: long s and a ligature of two letters.
        Row{L"Ye\u017F", true}, Row{L"fal\u017Fe", false}, Row{L"O\uFB00", false}}) {
    for (bool const before : {true, false}) {
      bool value = before;
      EXPECT_EQ(VRELStringToBool(VRELString(row.text), value), VREL_S_OK) << VRELString(row.text);
      EXPECT_EQ(value, row.value) << VRELString(row.text);
    }
  }
}

TEST(VRELStringToBoolTest, OtherStringsFail) {
  for (wchar_t const* text : {L"", L"1", L"0", L" yes", L"yes ", L"y", L"ye", L"yess", L"tru", L"o", L"offf", L"n",
                              L"f", L"t\u0072\u00FCe", L"\u00E9", L"\u212A"}) {
    for (bool const before : {true, false}) {
      bool value = before;
      EXPECT_EQ(VRELStringToBool(VRELString(text), value), VREL_E_FAIL) << VRELString(text);
      EXPECT_EQ(value, before);
    }
  }
  bool value = true;
  EXPECT_EQ(VRELStringToBool(Uninitialized(), value), VREL_E_FAIL);
  EXPECT_EQ(VRELStringToBool(VRELString("yes\0no", ascii) + VRELString(L"x"), value), VREL_E_FAIL);
  // U+0000 is a character, which UTF-7 encodes in bytes other than 0.
  VRELString const withZero("on+AAA-", "UTF-7");
  ASSERT_EQ(withZero.length(), 3);
  EXPECT_EQ(VRELStringToBool(withZero, value), VREL_E_FAIL);
  EXPECT_TRUE(value);
}

TEST(VRELStringToDoubleTest, ReadsNumberAtStart) {
  struct Row {
    wchar_t const* text;
    double value;
  };
  for (Row const& row :
       {Row{L"1e3", 1000.0}, Row{L"12abc", 12.0}, Row{L"-2.5", -2.5}, Row{L" 2.5", 2.5}, Row{L"+7", 7.0},
        Row{L".5", 0.5}, Row{L"0x10", 16.0}, Row{L"0", 0.0}, Row{L"0.5e-400", 0.0}, Row{L"0abc", 0.0}, Row{L"007", 7.0},
        Row{L"0.30479999999999996", 0.30479999999999996}, Row{L"1e999", std::numeric_limits<double>::infinity()},
        // A character outside ASCII ends the number ...
        Row{L"12\u00E934", 12.0}, Row{L"12\U0001F52934", 12.0}, Row{L"0\uFF11", 0.0},
        // ... unless it is ignored in the conversion.
        Row{L"12\u00AD34", 1234.0}}) {
    double value = -99.0;
    EXPECT_EQ(VRELStringToDouble(VRELString(row.text), value), VREL_S_OK) << VRELString(row.text);
    EXPECT_EQ(value, row.value) << VRELString(row.text);
    EXPECT_FALSE(std::signbit(value) && value == 0.0);
  }
}

TEST(VRELStringToDoubleTest, NaNIsNotZero) {
  double value = -99.0;
  EXPECT_EQ(VRELStringToDouble(VRELString(L"nan"), value), VREL_S_OK);
  EXPECT_TRUE(std::isnan(value));
}

TEST(VRELStringToDoubleTest, ZeroNeedsLeadingDigit) {
  for (wchar_t const* text :
       {L"", L"abc", L"-0", L".0", L"+0", L" 0", L"\t0", L"-0abc", L"1e-400", L"\u00E9", L"e5", L"\uFF11"}) {
    double value = -99.0;
    EXPECT_EQ(VRELStringToDouble(VRELString(text), value), VREL_E_FAIL) << VRELString(text);
    EXPECT_EQ(value, -99.0);
  }
  double value = -99.0;
  EXPECT_EQ(VRELStringToDouble(Uninitialized(), value), VREL_E_FAIL);
  EXPECT_EQ(value, -99.0);
}

TEST(VRELStringToDoubleTest, LongStrings) {
  double value = -99.0;
  EXPECT_EQ(VRELStringToDouble(VRELString(("0." + std::string(1000, '0') + "5e1001").c_str()), value), VREL_S_OK);
  EXPECT_EQ(value, 5.0);
  EXPECT_EQ(VRELStringToDouble(VRELString((std::string(5000, ' ') + "4\xC3\xA9").c_str()), value), VREL_S_OK);
  EXPECT_EQ(value, 4.0);
}

TEST(VRELStringToIntegerTest, ReadsNumberAtStart) {
  struct Row {
    wchar_t const* text;
    int value;
  };
  for (Row const& row :
       {Row{L"007", 7}, Row{L"000", 0}, Row{L"0", 0}, Row{L"12x", 12}, Row{L"-3", -3}, Row{L" 5", 5}, Row{L"+5", 5},
        Row{L"0x10", 0}, Row{L"0abc", 0}, Row{L"1e3", 1}, Row{L"2147483647", INT_MAX}, Row{L"-2147483648", INT_MIN},
        // The low 32 bits of the long; those of the largest long are -1.
        Row{L"2147483648", INT_MIN}, Row{L"4294967297", 1}, Row{L"99999999999999999999", -1}, Row{L"12\u00E93", 12}}) {
    int value = -99;
    EXPECT_EQ(VRELStringToInteger(VRELString(row.text), value), VREL_S_OK) << VRELString(row.text);
    EXPECT_EQ(value, row.value) << VRELString(row.text);
  }
}

TEST(VRELStringToIntegerTest, ZeroNeedsLeadingDigit) {
  for (wchar_t const* text : {L"", L"abc", L"-0", L"+0", L" 0", L".5", L"4294967296", L"-99999999999999999999"}) {
    int value = -99;
    EXPECT_EQ(VRELStringToInteger(VRELString(text), value), VREL_E_FAIL) << VRELString(text);
    EXPECT_EQ(value, -99);
  }
  int value = -99;
  EXPECT_EQ(VRELStringToInteger(Uninitialized(), value), VREL_E_FAIL);
  EXPECT_EQ(value, -99);
}

TEST(VRELStringGetTrimmedStringTest, RemovesWhiteSpaceAtBothEnds) {
  struct Row {
    wchar_t const* text;
    char const* trimmed;
  };
  for (Row const& row : {Row{L"", ""}, Row{L"   ", ""}, Row{L"abc", "abc"}, Row{L"  abc", "abc"}, Row{L"abc  ", "abc"},
                         Row{L" \t\n\v\f\r a b \r\n", "a b"}, Row{L" x ", "x"}, Row{L" \u00E9 ", "\u00E9"},
                         Row{L"\u00A0 a", "\u00A0 a"}}) {
    EXPECT_EQ(VRELStringGetTrimmedString(VRELString(row.text)).toUtf8(), row.trimmed);
    EXPECT_EQ(VRELStringCheckIfWhiteSpace(VRELString(row.text)), *row.trimmed == '\0');
  }
}

TEST(VRELStringGetTrimmedStringTest, ResultHasNoBadConversionFlag) {
  ASSERT_TRUE(VRELString("abc").getBadConversion());
  EXPECT_FALSE(VRELStringGetTrimmedString(VRELString("abc")).getBadConversion());
}

// Each character above U+FFFF removes one more unit at the end.
TEST(VRELStringGetTrimmedStringTest, EndIsCountedInCharacters) {
  EXPECT_EQ(VRELStringGetTrimmedString(VRELString(L" \U0001F529abc ")).toUtf16(), u"\U0001F529ab");
  EXPECT_EQ(VRELStringGetTrimmedString(VRELString(L"a\U0001F529\U0001F529bc")).toUtf16(), u"a\U0001F529\U0001F529");
  EXPECT_EQ(VRELStringGetTrimmedString(VRELString(L" \U0001F529")).toUtf16(), std::u16string(1, char16_t(0xD83D)));
}

TEST(VRELStringGetTrimmedStringTest, InvalidUtf16IsEmpty) {
  VRELString const text = Utf16({u' ', u'a', char16_t(0xD800), u' '});
  EXPECT_EQ(VRELStringGetTrimmedString(text).length(), 0);
  EXPECT_TRUE(VRELStringCheckIfWhiteSpace(text));
  EXPECT_EQ(VRELStringGetTrimmedString(Uninitialized()).length(), 0);
  EXPECT_TRUE(VRELStringCheckIfWhiteSpace(Uninitialized()));
}

TEST(VRELStringGetTrimmedStringTest, WhiteSpaceDependsOnLocale) {
  ChildResult const child = RunInChild([] {
    VRELString const text(L"\u3000a\u3000");
    bool const before = VRELStringGetTrimmedString(text).length() == 3;
    if (std::setlocale(LC_ALL, "C.UTF-8") == nullptr) return 2;
    return before && VRELStringGetTrimmedString(text).length() == 1 ? 0 : 1;
  });
  EXPECT_EQ(child.exitStatus, 0);
}

TEST(VRELStringConvertCaseTest, Ascii) {
  EXPECT_EQ(VRELStringConvertToLowerCase(VRELString(L"AbC-9[Z]")).toUtf8(), "abc-9[z]");
  EXPECT_EQ(VRELStringConvertToUpperCase(VRELString(L"AbC-9{z}")).toUtf8(), "ABC-9{Z}");
  EXPECT_EQ(VRELStringConvertToLowerCase(VRELString(L"A")).toUtf8(), "a");
  EXPECT_EQ(VRELStringConvertToUpperCase(VRELString(L"z")).toUtf8(), "Z");
  EXPECT_EQ(VRELStringConvertToLowerCase(VRELString()).length(), 0);
  EXPECT_EQ(VRELStringConvertToUpperCase(VRELString()).length(), 0);
  EXPECT_FALSE(VRELStringConvertToLowerCase(VRELString("A")).getBadConversion());
}

TEST(VRELStringConvertCaseTest, LettersDependOnLocale) {
  ChildResult const child = RunInChild([] {
    VRELString const text(L"\u00C4\u00E4\U0001F529\U00010400");
    bool right = VRELStringConvertToLowerCase(text).equals(text) && VRELStringConvertToUpperCase(text).equals(text);
    if (std::setlocale(LC_ALL, "C.UTF-8") == nullptr) return 2;
    right = right && VRELStringConvertToLowerCase(text).toUtf16() == u"\u00E4\u00E4\U0001F529\U00010428" &&
            VRELStringConvertToUpperCase(text).toUtf16() == u"\u00C4\u00C4\U0001F529\U00010400";
    return right ? 0 : 1;
  });
  EXPECT_EQ(child.exitStatus, 0);
}

TEST(VRELStringConvertCaseTest, LongStrings) {
  EXPECT_EQ(VRELStringConvertToUpperCase(VRELString(std::string(5000, 'a').c_str())).toUtf8(), std::string(5000, 'A'));
}

TEST(VRELStringConvertCaseTest, InvalidUtf16IsEmpty) {
  VRELString const text = Utf16({u'a', char16_t(0xDC00)});
  EXPECT_EQ(VRELStringConvertToLowerCase(text).length(), 0);
  EXPECT_EQ(VRELStringConvertToUpperCase(text).length(), 0);
  EXPECT_EQ(VRELStringConvertToLowerCase(Uninitialized()).length(), 0);
}

TEST(VRELStringReplaceNonASCIICharsWithTest, ReplacesNothing) {
  VRELString const text("a\xC3\xA9z");
  VRELString const result = VRELStringReplaceNonASCIICharsWith(text, L'_');
  EXPECT_TRUE(result.equals(text));
  EXPECT_TRUE(text.getBadConversion());
  EXPECT_FALSE(result.getBadConversion());
  EXPECT_EQ(VRELStringReplaceNonASCIICharsWith(VRELString(L"\U0001F529"), L'_').toUtf16(), u"\U0001F529");
  EXPECT_EQ(VRELStringReplaceNonASCIICharsWith(Uninitialized(), L'_').length(), 0);
}

TEST(VRELStringReplaceNonASCIICharsWithTest, InvalidUtf16IsCopied) {
  VRELString const text = Utf16({u'a', char16_t(0xD800), u'b'});
  EXPECT_EQ(VRELStringReplaceNonASCIICharsWith(text, L'_').toUtf16(), text.toUtf16());
}

// ASCII letters are no exception, and numbers depend on the locale in both directions.
TEST(VRELStringConversionsTest, DependOnLocale) {
  ChildResult const child = RunInTurkishLocale([] {
    EXPECT_EQ(VRELStringConvertToLowerCase(VRELString(L"I")).toUtf16(), u"\u0131");
    EXPECT_EQ(VRELStringConvertToUpperCase(VRELString(L"i")).toUtf16(), u"\u0130");
    EXPECT_EQ(VRELStringFromDouble(1.5).toUtf8(), "1,500000");
    double value = 0.0;
    EXPECT_EQ(VRELStringToDouble(VRELString(L"1,5"), value), VREL_S_OK);
    EXPECT_EQ(value, 1.5);
    EXPECT_EQ(VRELStringToDouble(VRELString(L"2.5"), value), VREL_S_OK);
    EXPECT_EQ(value, 2.0);
    bool flag = true;
    EXPECT_EQ(VRELStringToBool(VRELString(L"FALSE"), flag), VREL_S_OK);
    EXPECT_FALSE(flag);
    return testing::Test::HasFailure() ? 1 : 0;
  });
  if (child.exitStatus == noTurkishLocale) GTEST_SKIP() << "no locale";
  EXPECT_EQ(child.exitStatus, 0) << child.output << child.errors;
}

std::u16string Stripped(VRELString const& text) {
  VRELString out(L"before");
  EXPECT_EQ(RemoveDoubleQuotesAtStartAndEndOf(text, out), VREL_S_OK);
  return out.toUtf16();
}

TEST(RemoveDoubleQuotesTest, AtStartAndEnd) {
  struct Row {
    wchar_t const* text;
    char16_t const* stripped;
  };
  for (Row const& row : {Row{L"", u""}, Row{L"abc", u"abc"}, Row{L"\"", u""}, Row{L"\"\"", u""}, Row{L"\"\"\"", u""},
                         Row{L"\"a\"", u"a"}, Row{L"\"\"ab\"\"", u"ab"}, Row{L"\"a", u"a"}, Row{L"a\"", u"a"},
                         Row{L"a\"\"\"", u"a"}, Row{L"a\"b", u"a\"b"}, Row{L"\"a\"b\"", u"a\"b"},
                         Row{L"a\"b\"\"", u"a\"b"}, Row{L" \"a\" ", u" \"a\" "}, Row{L"'a'", u"'a'"}}) {
    EXPECT_EQ(Stripped(VRELString(row.text)), row.stripped) << VRELString(row.text);
  }
}

// The end is computed as if each character had one unit.
TEST(RemoveDoubleQuotesTest, SurrogatePairsShiftEnd) {
  // One pair: the mark at the end is not found, the one at the start is removed.
  EXPECT_EQ(Stripped(VRELString(L"\"\U0001F529\"")), u"\U0001F529\"");
  // Two pairs: the mark at the start and one unit at the end are removed.
  EXPECT_EQ(Stripped(VRELString(L"\"\U0001F529\U0001F529ab")), u"\U0001F529\U0001F529a");
  // A mark one unit before the end is taken for the end, and is removed with the rest.
  EXPECT_EQ(Stripped(VRELString(L"\U0001F529a\"b")), u"\U0001F529a");
  EXPECT_EQ(Stripped(VRELString(L"\U0001F529\"a\"b")), u"\U0001F529");
  // The cut divides a pair, and the rest cannot be converted.
  EXPECT_EQ(Stripped(VRELString(L"\"a\U0001F529\U0001F529")), (std::u16string{u'a', 0xD83D, 0xDD29, 0xD83D}));
  EXPECT_EQ(Stripped(VRELString(L"\"\"\U0001F529\U0001F529")), u"");
}

TEST(RemoveDoubleQuotesTest, UnchangedStringKeepsFlag) {
  VRELString out;
  RemoveDoubleQuotesAtStartAndEndOf(VRELString("abc"), out);
  EXPECT_TRUE(out.getBadConversion());
  RemoveDoubleQuotesAtStartAndEndOf(VRELString("\"abc\""), out);
  EXPECT_FALSE(out.getBadConversion());
  RemoveDoubleQuotesAtStartAndEndOf(VRELString("abc", ascii), out);
  EXPECT_FALSE(out.getBadConversion());
}

TEST(RemoveDoubleQuotesTest, ArgumentsMayBeOneObject) {
  VRELString text(L"\"abc\"");
  RemoveDoubleQuotesAtStartAndEndOf(text, text);
  EXPECT_EQ(text.toUtf8(), "abc");
  RemoveDoubleQuotesAtStartAndEndOf(text, text);
  EXPECT_EQ(text.toUtf8(), "abc");
}

TEST(RemoveDoubleQuotesTest, EndsAtInnerZero) {
  VRELString const text("x\"+AAA-b", "UTF-7");
  ASSERT_EQ(text.length(), 4);
  EXPECT_EQ(Stripped(text), u"x");
}

// The documented loop.
VRELString StripSlowly(VRELString const& in) {
  unsigned short const quote = u'"';
  VRELString work(in);
  for (;;) {
    int const n = work.getConvertToWideCharacterSize();
    int const first = work.indexOf(quote, 0);
    int const last = work.lastIndexOf(quote, 0);
    if (first == 0) {
      work = work.substring(1, n);
    } else if ((first >= 1 && first == n - 2) || (last >= 1 && last == n - 2)) {
      work = work.substring(0, n - 2);
    } else {
      return work;
    }
  }
}

TEST(RemoveDoubleQuotesTest, EqualsDocumentedLoop) {
  std::mt19937 random(7);
  std::u16string const pieces[] = {u"\"", u"\"", u"\"", u"a", u"\u00E9", u"\U0001F529", u"\U0001F529"};
  for (int i = 0; i < 100000 && !testing::Test::HasFailure(); ++i) {
    std::u16string units;
    for (std::size_t n = random() % 14; n > 0; --n) units += pieces[random() % std::size(pieces)];
    if (random() % 8 == 0) units += char16_t(random() % 2 == 0 ? 0xD800 : 0xDC00);
    if (random() % 4 == 0) units += u"\"\"";
    EXPECT_EQ(Stripped(Utf16(units)), StripSlowly(Utf16(units)).toUtf16()) << Utf16(units);
  }
}

TEST(RemoveDoubleQuotesTest, MillionMarksNeedLinearTime) {
  std::u16string const marks(500000, u'"');
  EXPECT_EQ(Stripped(Utf16(marks + u"a" + marks)), u"a");
  // Each mark at the start removes a unit at the end.
  std::u16string const pairs = u"\U0001F529\U0001F529";
  EXPECT_EQ(Stripped(Utf16(marks + pairs + std::u16string(500000, u'a'))), pairs);
}

}  // namespace
