#include "VRELProgressReport.h"

#include <gtest/gtest.h>

namespace {

TEST(VRELProgressReportTest, DefaultFunctionDoesNothing) {
  EXPECT_EQ(VRELProgressReport_fct, &VRELProgressReport_DefaultFct);
  int state = 7;
  VRELProgressReport_fct(0.5, state);
  EXPECT_EQ(state, 7);
  VRELProgressReport_fct = [](double progress, int& status) { status = static_cast<int>(progress * 100); };
  VRELProgressReport_fct(0.5, state);
  EXPECT_EQ(state, 50);
  VRELProgressReport_fct = VRELProgressReport_DefaultFct;
}

}  // namespace
