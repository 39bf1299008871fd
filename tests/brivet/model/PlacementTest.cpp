#include "Placement.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(PlacementTest, ProductAppliesRightOperandFirst) {
  double point[3] = {1, 2, 3};
  (Placement::Translation(10, 0, 0) * Placement::Scaling(2)).Apply(point);
  EXPECT_EQ(point[0], 12);
  EXPECT_EQ(point[1], 4);
  EXPECT_EQ(point[2], 6);
}

TEST(PlacementTest, InvertUndoesApply) {
  Placement const turn({0, -2, 0, 5, 2, 0, 0, 6, 0, 0, 2, 7});
  EXPECT_EQ(turn.Determinant(), 8);
  Placement inverse;
  ASSERT_TRUE(turn.Invert(inverse));
  double point[3] = {1, 2, 3};
  turn.Apply(point);
  EXPECT_EQ(point[0], 1);
  EXPECT_EQ(point[1], 8);
  EXPECT_EQ(point[2], 13);
  inverse.Apply(point);
  EXPECT_DOUBLE_EQ(point[0], 1);
  EXPECT_DOUBLE_EQ(point[1], 2);
  EXPECT_DOUBLE_EQ(point[2], 3);
}

TEST(PlacementTest, InvertRefusesSingularMatrix) {
  Placement result = Placement::Translation(1, 2, 3);
  EXPECT_FALSE(Placement::Scaling(0).Invert(result));
  EXPECT_EQ(result.Numbers()[3], 1);
}

TEST(PlacementTest, IsIdentityAndIsFinite) {
  EXPECT_TRUE(Placement().IsIdentity());
  EXPECT_FALSE(Placement::Translation(0, 0, 1e-9).IsIdentity());
  EXPECT_TRUE(Placement().IsFinite());
  EXPECT_FALSE(Placement::Translation(0, NAN, 0).IsFinite());
  EXPECT_FALSE(Placement::Scaling(INFINITY).IsFinite());
}
