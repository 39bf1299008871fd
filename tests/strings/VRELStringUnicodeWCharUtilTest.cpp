#include "VRELStringUnicodeWCharUtil.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>

namespace {

TEST(VRELStringUnicodeWCharUtilTest, ConvertsToWideCharacters) {
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELStringUnicodeWCharUtil>);
  VRELStringUnicodeWCharUtil const view(VRELString(L"a\u00E9\U0001F600"));
  wchar_t const* const wide = view;
  ASSERT_NE(wide, nullptr);
  EXPECT_EQ(std::wstring(wide), L"a\u00E9\U0001F600");
  VRELStringUnicodeWCharUtil const empty{VRELString()};
  ASSERT_NE(static_cast<wchar_t const*>(empty), nullptr);
  EXPECT_EQ(*static_cast<wchar_t const*>(empty), 0);
}

TEST(VRELStringUnicodeWCharUtilTest, InvalidUtf16IsNull) {
  VRELString text(L"gone");
  VRELString const taken(std::move(text));
  EXPECT_EQ(static_cast<wchar_t const*>(VRELStringUnicodeWCharUtil(text)), nullptr);
  VRELString const halfPair(static_cast<unsigned short>(0xD83D));
  EXPECT_EQ(static_cast<wchar_t const*>(VRELStringUnicodeWCharUtil(halfPair)), nullptr);
}

}  // namespace
