#include "VRELAscii.h"

#include <gtest/gtest.h>

#include <cctype>
#include <climits>

namespace {

// The C library in the locale "C", which the tests run in, is the model for all bytes.
TEST(VRELAsciiTest, AgreesWithCLibraryForAllBytes) {
  for (int c = 0; c <= UCHAR_MAX; ++c) {
    SCOPED_TRACE(c);
    char const byte = static_cast<char>(c);
    EXPECT_EQ(VRELIsAsciiDigit(byte), std::isdigit(c) != 0);
    EXPECT_EQ(VRELIsAsciiHexDigit(byte), std::isxdigit(c) != 0);
    EXPECT_EQ(VRELIsAsciiUpper(byte), std::isupper(c) != 0);
    EXPECT_EQ(VRELIsAsciiLower(byte), std::islower(c) != 0);
    EXPECT_EQ(VRELIsAsciiLetter(byte), std::isalpha(c) != 0);
    EXPECT_EQ(VRELIsAsciiSpace(byte), std::isspace(c) != 0);
    EXPECT_EQ(VRELIsAsciiPunctuation(byte), std::ispunct(c) != 0);
    EXPECT_EQ(static_cast<unsigned char>(VRELFoldAscii(byte)), std::tolower(c));
  }
}

TEST(VRELAsciiTest, HexDigitValue) {
  EXPECT_EQ(VRELHexDigitValue('0'), 0);
  EXPECT_EQ(VRELHexDigitValue(u'9'), 9);
  EXPECT_EQ(VRELHexDigitValue(L'a'), 10);
  EXPECT_EQ(VRELHexDigitValue('F'), 15);
  EXPECT_EQ(VRELHexDigitValue('g'), -1);
  EXPECT_EQ(VRELHexDigitValue('@'), -1);
}

TEST(VRELAsciiTest, WideCharactersOutsideAsciiHaveNoClass) {
  EXPECT_FALSE(VRELIsAsciiDigit(u'\u0661'));
  EXPECT_FALSE(VRELIsAsciiLetter(u'\u00C9'));
  EXPECT_FALSE(VRELIsAsciiSpace(u'\u00A0'));
  EXPECT_EQ(VRELFoldAscii(u'\u00C9'), u'\u00C9');
  EXPECT_EQ(VRELFoldAscii(u'\u0141'), u'\u0141');
}

}  // namespace
