#include "VRELWeightPoint2D.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "Coordinates.h"
#include "VRELAffine2D.h"
#include "VRELMorph2D.h"
#include "VirtualSlot.h"

namespace {

using Values = std::vector<double>;

// A rotation by 90 degrees.
VRELAffine2D RightAngle() {
  VRELAffine2D affine;
  double const rows[2][2] = {{0.0, -1.0}, {1.0, 0.0}};
  for (int i = 0; i < 2; ++i) affine.SetRow(i, rows[i]);
  return affine;
}

TEST(VRELWeightPoint2DTest, TransformSlotsFollowBase) {
  static_assert(std::is_base_of_v<VRELPoint, VRELWeightPoint2D>);
  static_assert(!std::is_base_of_v<VRELPoint2D, VRELWeightPoint2D>);
  void (VRELWeightPoint2D::*const byAffine)(VRELAffine2D const&) = &VRELWeightPoint2D::Transform;
  void (VRELWeightPoint2D::*const byMorph)(VRELMorph2D const&, bool) = &VRELWeightPoint2D::Transform;
  EXPECT_EQ(SlotOf(byAffine), 15U);
  EXPECT_EQ(SlotOf(byMorph), 16U);
}

TEST(VRELWeightPoint2DTest, AffineTransformsStoredValues) {
  VRELWeightPoint2D p(VRELPoint2D(2.0, 6.0), 4.0, false);
  p.Transform(RightAngle());
  EXPECT_EQ(Coordinates(p, 3), (Values{-6.0, 2.0, 4.0}));
}

TEST(VRELWeightPoint2DTest, MorphScalesTranslationByWeight) {
  VRELMorph2D const morph(RightAngle(), VRELPoint2D(10.0, 20.0), 3.0);
  VRELWeightPoint2D p(VRELPoint2D(2.0, 6.0), 4.0, false);
  p.Transform(morph, false);
  EXPECT_EQ(Coordinates(p, 3), (Values{-18.0 + 40.0, 6.0 + 80.0, 4.0}));
  VRELWeightPoint2D q(VRELPoint2D(2.0, 6.0), 4.0, false);
  q.Transform(morph, true);
  EXPECT_EQ(Coordinates(q, 3), (Values{-18.0, 6.0, 4.0}));
}

TEST(VRELWeightPoint2DTest, MorphTransformsCoordinates) {
  VRELMorph2D const morph(RightAngle(), VRELPoint2D(10.0, 20.0), 3.0);
  VRELWeightPoint2D weighted(VRELPoint2D(2.0, 6.0), 4.0, true);
  weighted.Transform(morph, false);
  VRELPoint2D plain(VRELPoint2D(2.0, 6.0));
  plain.Transform(morph, false);
  EXPECT_EQ(Coordinates(weighted.GetCoords()), Coordinates(plain));
}

}  // namespace
