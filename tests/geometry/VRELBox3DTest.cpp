#include "VRELBox3D.h"

#include <gtest/gtest.h>

#include "Gk_Def.h"

namespace {

// VRELBoxOfTest tests what both boxes have in common.

TEST(VRELBox3DTest, HasThreeDimensions) {
  VRELBox3D const box(VRELPoint3D(2, 0, 7), VRELPoint3D(0, 2, -7));
  EXPECT_EQ(box.GetDimension(), 3);
  EXPECT_EQ(box.low()[2], -7.0);
  EXPECT_EQ(box.high()[2], 7.0);
}

TEST(VRELBox3DTest, DiagonalIsDistanceOfCorners) {
  EXPECT_EQ(VRELBox3D(VRELPoint3D(1, 2, 3), VRELPoint3D(4, 6, 15)).diagonal(), 13.0);
  EXPECT_EQ(VRELBox3D().diagonal(), 0.0);
}

TEST(VRELBox3DTest, ApplyTransformsTwoCorners) {
  // A rotation by 90 degrees about z maps (0, 0, 0) to itself and (1, 2, 0) to (-2, 1, 0).
  VRELBox3D box(VRELPoint3D(0, 0, 0), VRELPoint3D(1, 2, 0));
  box.apply(VRELMorph3D(VRELPoint3D(0, 0, 1), VRELPIBY2));
  EXPECT_NEAR(box.low()[0], -2.0, 1e-12);
  EXPECT_NEAR(box.low()[1], 0.0, 1e-12);
  EXPECT_EQ(box.low()[2], 0.0);
  EXPECT_NEAR(box.high()[0], 0.0, 1e-12);
  EXPECT_NEAR(box.high()[1], 1.0, 1e-12);
  EXPECT_EQ(box.high()[2], 0.0);
  // A centred square has no width after a rotation by 45 degrees.
  VRELBox3D square(VRELPoint3D(-1, -1, 0), VRELPoint3D(1, 1, 1));
  square.apply(VRELMorph3D(VRELPoint3D(0, 0, 1), VRELPIBY4));
  EXPECT_NEAR(square.high()[0] - square.low()[0], 0.0, 1e-12);
  EXPECT_NEAR(square.high()[1] - square.low()[1], 2 * 1.4142135623730951, 1e-12);
}

}  // namespace
