#include "VRELStringAsciiCharUtil.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace {

TEST(VRELStringAsciiCharUtilTest, ConvertsToAscii) {
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELStringAsciiCharUtil>);
  VRELStringAsciiCharUtil const view(VRELString(L"abc#\n"), false);
  EXPECT_STREQ(view, "abc#\n");
  VRELStringAsciiCharUtil const empty(VRELString(), true);
  EXPECT_STREQ(empty, "");
}

TEST(VRELStringAsciiCharUtilTest, SubstitutesOtherCharacters) {
  VRELString const text(L"a\u00E9\U0001F600\x1Az");
  VRELStringAsciiCharUtil const plain(text, false);
  EXPECT_STREQ(plain, "a\x1A\x1A\x1Az");
  VRELStringAsciiCharUtil const underscores(text, true);
  EXPECT_STREQ(underscores, "a___z");
}

TEST(VRELStringAsciiCharUtilTest, UninitializedStringIsNull) {
  VRELString text(L"gone");
  VRELString const taken(std::move(text));
  VRELStringAsciiCharUtil const view(text, false);
  char const* const bytes = view;
  EXPECT_EQ(bytes, nullptr);
}

}  // namespace
