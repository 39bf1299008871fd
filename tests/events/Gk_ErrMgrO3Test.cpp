// Compiled with -O3; see tests/CMakeLists.txt.
#include <gtest/gtest.h>

#include "AbortLoop.h"

namespace {

TEST(Gk_ErrMgrO3Test, SignalStopsLoop) {
  EXPECT_TRUE(AbortStopsLoop());
  EXPECT_FALSE(Gk_ErrMgr::shouldAbort());
}

}  // namespace
