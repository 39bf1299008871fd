#include "VRELTaskTimingInfo.h"

#include <gtest/gtest.h>

namespace {

TEST(VRELTaskTimingInfoTest, StartsAtZero) {
  VRELTaskTimingInfo const info;
  EXPECT_EQ(info.taskName.length(), 0);
  EXPECT_EQ(info.time, 0);
  EXPECT_EQ(info.clock, 0);
  EXPECT_EQ(info.kernelTime, 0);
  EXPECT_EQ(info.userTime, 0);
  EXPECT_LT(&info.time, &info.clock);
  EXPECT_LT(&info.kernelTime, &info.userTime);
}

}  // namespace
