#include "RealText.h"

#include <gtest/gtest.h>

#include <limits>

TEST(RealTextTest, HasDecimalPoint) {
  EXPECT_EQ(FormatReal(0.0), "0.");
  EXPECT_EQ(FormatReal(-1.0), "-1.");
  EXPECT_EQ(FormatReal(0.1), "0.1");
  EXPECT_EQ(FormatReal(0.1F), "0.1");
  EXPECT_EQ(FormatReal(1e22), "1.E+22");
  EXPECT_EQ(FormatReal(-2.5e-7), "-2.5E-07");
}

TEST(RealTextTest, ReplacesNumbersThatAreNotFinite) {
  EXPECT_EQ(FormatReal(std::numeric_limits<double>::infinity()), "0.");
  EXPECT_EQ(FormatReal(std::numeric_limits<float>::quiet_NaN()), "0.");
}
