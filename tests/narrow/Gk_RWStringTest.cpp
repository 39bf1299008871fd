#include "Gk_RWString.h"

#include <gtest/gtest.h>

#include <climits>
#include <string_view>

#include "Gk_String.h"

namespace {

TEST(Gk_RWStringTest, AddsNoField) {
  EXPECT_EQ(sizeof(Gk_RWString), sizeof(Gk_ROString));
}

TEST(Gk_RWStringTest, WritesAreVisibleInAllOwners) {
  Gk_String string("abc");
  Gk_ROString const reader(string.dataStr());
  Gk_RWString writer = string.rwString();
  Gk_RWString const other(writer);
  writer[0] = 'X';
  char* const bytes = writer;
  bytes[1] = 'Y';
  EXPECT_STREQ(string, "XYc");
  EXPECT_STREQ(reader, "XYc");
  EXPECT_STREQ(other, "XYc");
  EXPECT_EQ(other[1], 'Y');
}

TEST(Gk_RWStringTest, SharesArray) {
  VRELDynamicArray<char> array(3, 'a');
  Gk_RWString writer(array);
  writer[2] = 'b';
  EXPECT_EQ(array[2], 'b');
  EXPECT_EQ(writer.len(), 3);
}

TEST(Gk_RWStringTest, WritesAfterOffset) {
  Gk_String string("abcd");
  Gk_RWString writer = string.dataStr();
  writer.offset(2);
  writer[0] = 'X';
  EXPECT_STREQ(string, "abXd");
}

TEST(Gk_RWStringTest, ToLowerConvertsAllBytes) {
  Gk_String string("AB\0CD-1\xC9", 9);
  Gk_RWString writer = string.dataStr();
  writer.offset(1);
  writer.toLower();
  EXPECT_EQ(std::string_view(string, 9), std::string_view("Ab\0cd-1\xC9", 9));
  Gk_RWString().toLower();
}

TEST(Gk_RWStringTest, ViewOutsideBytesAccessesNothing) {
  Gk_String string("ABCC");
  Gk_RWString after = string.dataStr();
  after.offset(9);
  after.toLower();
  after[0] = 'x';
  EXPECT_EQ(after[0], '\0');
  EXPECT_STREQ(string, "ABCC");
  after[-7] = 'y';
  EXPECT_STREQ(string, "AByC");
  Gk_RWString before = string.dataStr();
  before.offset(INT_MIN);
  EXPECT_EQ(before[0], '\0');
  before.toLower();
  EXPECT_STREQ(string, "abyc");
}

}  // namespace
