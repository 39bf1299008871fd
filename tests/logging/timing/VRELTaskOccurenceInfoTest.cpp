#include "VRELTaskOccurenceInfo.h"

#include <gtest/gtest.h>

namespace {

TEST(VRELTaskOccurenceInfoTest, StartsAtZero) {
  VRELTaskOccurenceInfo const info;
  EXPECT_EQ(info.count, 0);
  EXPECT_EQ(info.elapsed, 0);
  EXPECT_EQ(info.kernel, 0);
  EXPECT_EQ(info.user, 0);
  EXPECT_LT(&info.elapsed, &info.kernel);
  EXPECT_LT(&info.kernel, &info.user);
}

}  // namespace
