// Compiled with -O2; see tests/CMakeLists.txt.
#include <gtest/gtest.h>

#include "AbortLoop.h"

namespace {

TEST(Gk_ErrMgrO2Test, SignalStopsLoop) {
  EXPECT_TRUE(AbortStopsLoop());
  EXPECT_FALSE(Gk_ErrMgr::shouldAbort());
}

}  // namespace
