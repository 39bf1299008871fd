#include "VRELWeightPoint3D.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "Coordinates.h"
#include "VRELAffine3D.h"
#include "VRELMorph3D.h"
#include "VirtualSlot.h"

namespace {

using Values = std::vector<double>;

// A rotation by 90 degrees.
VRELAffine3D RightAngle() {
  VRELAffine3D affine;
  double const rows[3][3] = {{0.0, -1.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0}};
  for (int i = 0; i < 3; ++i) affine.SetRow(i, rows[i]);
  return affine;
}

TEST(VRELWeightPoint3DTest, TransformSlotsFollowBase) {
  static_assert(std::is_base_of_v<VRELPoint, VRELWeightPoint3D>);
  static_assert(!std::is_base_of_v<VRELPoint3D, VRELWeightPoint3D>);
  void (VRELWeightPoint3D::*const byAffine)(VRELAffine3D const&) = &VRELWeightPoint3D::Transform;
  void (VRELWeightPoint3D::*const byMorph)(VRELMorph3D const&, bool) = &VRELWeightPoint3D::Transform;
  EXPECT_EQ(SlotOf(byAffine), 15U);
  EXPECT_EQ(SlotOf(byMorph), 16U);
}

TEST(VRELWeightPoint3DTest, AffineTransformsStoredValues) {
  VRELWeightPoint3D p(VRELPoint3D(2.0, 6.0, 8.0), 4.0, false);
  p.Transform(RightAngle());
  EXPECT_EQ(Coordinates(p, 4), (Values{-6.0, 2.0, 8.0, 4.0}));
}

TEST(VRELWeightPoint3DTest, MorphScalesTranslationByWeight) {
  VRELMorph3D const morph(RightAngle(), VRELPoint3D(10.0, 20.0, 30.0), 3.0);
  VRELWeightPoint3D p(VRELPoint3D(2.0, 6.0, 8.0), 4.0, false);
  p.Transform(morph, false);
  EXPECT_EQ(Coordinates(p, 4), (Values{-18.0 + 40.0, 6.0 + 80.0, 24.0 + 120.0, 4.0}));
  VRELWeightPoint3D q(VRELPoint3D(2.0, 6.0, 8.0), 4.0, false);
  q.Transform(morph, true);
  EXPECT_EQ(Coordinates(q, 4), (Values{-18.0, 6.0, 24.0, 4.0}));
}

TEST(VRELWeightPoint3DTest, MorphTransformsCoordinates) {
  VRELMorph3D const morph(RightAngle(), VRELPoint3D(10.0, 20.0, 30.0), 3.0);
  VRELWeightPoint3D weighted(VRELPoint3D(2.0, 6.0, 8.0), 4.0, true);
  weighted.Transform(morph, false);
  VRELPoint3D plain(VRELPoint3D(2.0, 6.0, 8.0));
  plain.Transform(morph, false);
  EXPECT_EQ(Coordinates(weighted.GetCoords()), Coordinates(plain));
}

}  // namespace
