#include "VRELPerfTrackerStatus.h"

#include <gtest/gtest.h>

namespace {

TEST(VRELPerfTrackerStatusTest, IsOffByDefault) {
  EXPECT_FALSE(VRELPerfTrackerStatus::instance.IsPerfTracking());
  VRELPerfTrackerStatus status;
  VRELPerfTrackerStatus const& seen = status;
  EXPECT_FALSE(seen.IsPerfTracking());
  status.SetPerfTracking(true);
  EXPECT_TRUE(seen.IsPerfTracking());
  EXPECT_FALSE(VRELPerfTrackerStatus::instance.IsPerfTracking());
  status.SetPerfTracking(false);
  EXPECT_FALSE(seen.IsPerfTracking());
}

TEST(VRELPerfTrackerStatusTest, HasOneField) {
  EXPECT_EQ(sizeof(VRELPerfTrackerStatus), 2 * sizeof(void*));
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELPerfTrackerStatus>);
}

}  // namespace
