#include "VRELConvertedSize.h"

#include <gtest/gtest.h>
#include <unicode/ustring.h>

#include <climits>
#include <string>

#include "RepeatedUnits.h"
#include "VRELString.h"

namespace {

int Utf8Length(std::u16string_view part) {
  UErrorCode status = U_ZERO_ERROR;
  std::int32_t length = 0;
  u_strToUTF8(nullptr, 0, &length, part.data(), static_cast<std::int32_t>(part.size()), &status);
  return length;
}

TEST(VRELConvertedSizeTest, AddsPartsAndTerminator) {
  auto const units = [](std::u16string_view part) { return static_cast<int>(part.size()); };
  EXPECT_EQ(VRELConvertedSize(u"", units), 1);
  EXPECT_EQ(VRELConvertedSize(u"abcdefg", units, 3), 8);
  EXPECT_EQ(VRELConvertedSize(u"abcdefg", units, 1), 8);
}

TEST(VRELConvertedSizeTest, DoesNotDivideSurrogatePairs) {
  EXPECT_EQ(VRELConvertedSize(u"a\U0001F600b", Utf8Length, 2), 7);
  EXPECT_EQ(VRELConvertedSize(u"\U0001F600\U0001F600", Utf8Length, 3), 9);
  // Parts of one unit cannot keep a pair together; the size stays positive.
  EXPECT_GT(VRELConvertedSize(u"\U0001F600", Utf8Length, 1), 0);
}

TEST(VRELConvertedSizeTest, SizeAboveIntMaxIsZero) {
  auto const half = [](std::u16string_view) { return 1 << 30; };
  EXPECT_EQ(VRELConvertedSize(u"a", half, 1), (1 << 30) + 1);
  EXPECT_EQ(VRELConvertedSize(u"ab", half, 1), 0);
  EXPECT_EQ(VRELConvertedSize(u"abcd", half, 1), 0);
  auto const almost = [](std::u16string_view) { return INT_MAX - 1; };
  EXPECT_EQ(VRELConvertedSize(u"a", almost, 1), INT_MAX);
  auto const full = [](std::u16string_view) { return INT_MAX; };
  EXPECT_EQ(VRELConvertedSize(u"a", full, 1), 0);
}

// ICU reports a negative length for the whole string.
TEST(VRELConvertedSizeTest, EightHundredMillionEuroSigns) {
  RepeatedUnits const text(u'\u20AC', 800'000'000);
  if (!text.IsMapped()) GTEST_SKIP() << "cannot map 1.6 GB of addresses";
  EXPECT_EQ(VRELConvertedSize(text.View(), Utf8Length), 0);
  EXPECT_TRUE(VRELMayExceedInt(text.View()));
}

TEST(VRELConvertedSizeTest, StringsAboveIntMaxBytesAreRefused) {
  RepeatedUnits const bytes(u'\u6161', std::size_t(1) << 30);
  if (!bytes.IsMapped()) GTEST_SKIP() << "cannot map 2 GiB of addresses";
  auto const* const text = reinterpret_cast<char const*>(bytes.View().data());
  EXPECT_EQ(VRELString::getStringLength(text), 0);
  EXPECT_EQ(VRELString::getStringLength(text + 1), INT_MAX);
  EXPECT_FALSE(VRELString(text).getIsInitialized());
  EXPECT_FALSE(VRELString(text, "ISO-8859-1").getIsInitialized());
  EXPECT_FALSE(VRELString(std::string_view(text)).getIsInitialized());
}

}  // namespace
