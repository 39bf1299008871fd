#include "VRELTest.h"

#include <gtest/gtest.h>

namespace {

TEST(VRELTestTest, CFunctionsIndent) {
  EXPECT_EQ(_VRELTestTab, 0);
  VRELTest_Tab();
  VRELTest_Tab();
  EXPECT_EQ(_VRELTestTab, 2);
  VRELTest_Untab();
  EXPECT_EQ(_VRELTestTab, 1);
  VRELTest_Untab();
  VRELTest_Untab();
  EXPECT_EQ(_VRELTestTab, -1);
  _VRELTestTab = 0;
}

}  // namespace
