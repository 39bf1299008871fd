// Compiled with -O3; see tests/CMakeLists.txt.
#include <gtest/gtest.h>

#include "AbortLoop.h"
#include "Sanitizer.h"

namespace {

TEST(Gk_ErrMgrO3Test, SignalStopsLoop) {
#ifdef VREL_TEST_HAS_SANITIZER
  GTEST_SKIP() << "the checks of bool in g++ 12 read a volatile bool as an ordinary one";
#endif
  EXPECT_TRUE(AbortStopsLoop());
  EXPECT_FALSE(Gk_ErrMgr::shouldAbort());
}

}  // namespace
