#include "VRELBox2D.h"

#include <gtest/gtest.h>

namespace {

// VRELBoxOfTest tests what both boxes have in common.

TEST(VRELBox2DTest, HasTwoDimensions) {
  VRELBox2D const box(VRELPoint2D(2, 0), VRELPoint2D(0, 2));
  EXPECT_EQ(box.GetDimension(), 2);
  EXPECT_EQ(box.low()[0], 0.0);
  EXPECT_EQ(box.low()[1], 0.0);
  EXPECT_EQ(box.high()[0], 2.0);
  EXPECT_EQ(box.high()[1], 2.0);
}

TEST(VRELBox2DTest, DiagonalIsDistanceOfCorners) {
  EXPECT_EQ(VRELBox2D(VRELPoint2D(4, 5), VRELPoint2D(1, 1)).diagonal(), 5.0);
  EXPECT_EQ(VRELBox2D().diagonal(), 0.0);
}

TEST(VRELBox2DTest, ApplyTransformsTwoCorners) {
  // A rotation by 90 degrees.
  VRELAffine2D turn;
  turn.SetElement(0, 1, -1.0);
  turn.SetElement(1, 0, 1.0);
  VRELBox2D box(VRELPoint2D(0, 0), VRELPoint2D(3, 1));
  box.apply(VRELMorph2D(turn, VRELPoint2D(10, 20), 2.0));
  // Maps (0, 0) and (3, 1) to (10, 20) and (8, 26).
  EXPECT_EQ(box.low()[0], 8.0);
  EXPECT_EQ(box.low()[1], 20.0);
  EXPECT_EQ(box.high()[0], 10.0);
  EXPECT_EQ(box.high()[1], 26.0);
  // A rotation of a centred square by 45 degrees maps both corners to one axis, so that the box becomes degenerate.
  double const r = 0.7071067811865476;
  VRELAffine2D eighth;
  eighth.SetElement(0, 0, r);
  eighth.SetElement(0, 1, -r);
  eighth.SetElement(1, 0, r);
  eighth.SetElement(1, 1, r);
  VRELBox2D square(VRELPoint2D(-1, -1), VRELPoint2D(1, 1));
  square.apply(VRELMorph2D(eighth, VRELPoint2D(), 1.0));
  EXPECT_EQ(square.low()[0], 0.0);
  EXPECT_EQ(square.high()[0], 0.0);
  EXPECT_DOUBLE_EQ(square.high()[1], 1.4142135623730951);
}

}  // namespace
