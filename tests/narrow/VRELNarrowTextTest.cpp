#include "VRELNarrowText.h"

#include <gtest/gtest.h>

#include <string_view>

#include "LocaleProcess.h"

namespace {

TEST(VRELNarrowTextTest, KeepsAsciiAndTerminator) {
  Gk_String const narrow = VRELNarrowText(L"bolt/m8");
  EXPECT_STREQ(narrow, "bolt/m8");
  EXPECT_EQ(narrow.len(), 8);
  EXPECT_EQ(VRELNarrowText(VRELString()).len(), 1);
  EXPECT_EQ(VRELWideText(Gk_String("bolt")).view(), u"bolt");
}

TEST(VRELNarrowTextTest, ReadsToFirstZeroByte) {
  EXPECT_EQ(VRELWideText(Gk_String()).view(), u"");
  EXPECT_EQ(VRELWideText(Gk_String("ab", 2)).view(), u"ab");
  EXPECT_EQ(VRELWideText(Gk_String("a\0b", 3)).view(), u"a");
}

TEST(VRELNarrowTextTest, UsesDefaultCodePage) {
  RunTestInLocale("C.UTF-8", [] {
    EXPECT_STREQ(VRELNarrowText(L"\u00D6l"), "\xC3\x96l");
    EXPECT_EQ(VRELWideText(Gk_String("\xC3\x96l")).view(), u"\u00D6l");
  });
}

}  // namespace
