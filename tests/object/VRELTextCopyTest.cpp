#include "VRELTextCopy.h"

#include <gtest/gtest.h>

namespace {

TEST(VRELTextCopyTest, CopiesBytes) {
  char const text[] = "hub\xE9";
  char* const copy = VRELTextCopy(text);
  EXPECT_NE(copy, text);
  EXPECT_STREQ(copy, "hub\xE9");
  delete[] copy;
}

TEST(VRELTextCopyTest, EmptyStringBecomesNull) {
  EXPECT_EQ(VRELTextCopy(nullptr), nullptr);
  EXPECT_EQ(VRELTextCopy(""), nullptr);
}

}  // namespace
