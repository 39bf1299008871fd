#include "VRELMatchPathSegment.h"

#include <gtest/gtest.h>

namespace {

TEST(VRELMatchPathSegmentTest, ReturnsBytesTaken) {
  EXPECT_EQ(VRELMatchPathSegment("abc/def", "abc"), 4);
  EXPECT_EQ(VRELMatchPathSegment("abc", "abc"), 3);
  EXPECT_EQ(VRELMatchPathSegment("abc/", "abc"), 4);
  EXPECT_EQ(VRELMatchPathSegment("abc/def", "abc/def"), 7);
  EXPECT_EQ(VRELMatchPathSegment("", ""), 0);
  EXPECT_EQ(VRELMatchPathSegment("abc/def", "ab"), -1);
  EXPECT_EQ(VRELMatchPathSegment("ab", "abc"), -1);
  EXPECT_EQ(VRELMatchPathSegment("abc", ""), -1);
}

TEST(VRELMatchPathSegmentTest, LeadingSlash) {
  EXPECT_EQ(VRELMatchPathSegment("/abc", "/"), 1);
  EXPECT_EQ(VRELMatchPathSegment("/abc", "/other"), 1);
  EXPECT_EQ(VRELMatchPathSegment("abc", "/"), 0);
  EXPECT_EQ(VRELMatchPathSegment("", "/"), 0);
  EXPECT_EQ(VRELMatchPathSegment("/abc", "abc"), -1);
  EXPECT_EQ(VRELMatchPathSegment("/", ""), -1);
}

}  // namespace
