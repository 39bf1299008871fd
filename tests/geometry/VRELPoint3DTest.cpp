#include "VRELPoint3D.h"

#include <gtest/gtest.h>

#include <cmath>
#include <type_traits>

#include "Coordinates.h"
#include "VRELAffine3D.h"
#include "VRELMorph3D.h"
#include "VRELPoint3DHandle.h"
#include "VirtualSlot.h"

namespace {

using Values = std::vector<double>;

TEST(VRELPoint3DTest, TransformSlotsFollowBase) {
  static_assert(std::is_base_of_v<VRELPoint, VRELPoint3D>);
  void (VRELPoint3D::*const byAffine)(VRELAffine3D const&) = &VRELPoint3D::Transform;
  void (VRELPoint3D::*const byMorph)(VRELMorph3D const&, bool) = &VRELPoint3D::Transform;
  EXPECT_EQ(SlotOf(byAffine), 15U);
  EXPECT_EQ(SlotOf(byMorph), 16U);
}

TEST(VRELPoint3DTest, ConstructorReadsThreeDoubles) {
  double const values[] = {1.0, 2.0, 3.0};
  EXPECT_EQ(Coordinates(VRELPoint3D(values)), (Values{1.0, 2.0, 3.0}));
  EXPECT_EQ(Coordinates(VRELPoint3D(static_cast<double const*>(nullptr))), (Values{0.0, 0.0, 0.0}));
}

TEST(VRELPoint3DTest, GetDoublesCopiesCoordinates) {
  double values[] = {0.0, 0.0, 0.0, 99.0};
  VRELGetDoublesFromVRELPoint3D(VRELPoint3D(1.0, 2.0, 3.0), values);
  EXPECT_EQ((Values(values, values + 4)), (Values{1.0, 2.0, 3.0, 99.0}));
  VRELGetDoublesFromVRELPoint3D(VRELPoint3D(1.0, 2.0, 3.0), nullptr);
}

TEST(VRELPoint3DTest, VectorProduct) {
  VRELPoint3D const a(1.0, 2.0, 3.0);
  EXPECT_EQ(Coordinates(VRELPoint3D::VectorProduct(a, VRELPoint3D(4.0, 5.0, 7.0))), (Values{-1.0, 5.0, -3.0}));
  EXPECT_EQ(Coordinates(VRELPoint3D::VectorProduct(a, a)), (Values{0.0, 0.0, 0.0}));
}

TEST(VRELPoint3DTest, TransformByAffineUsesRows) {
  VRELAffine3D affine;
  double const rows[3][3] = {{1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, {7.0, 8.0, 10.0}};
  for (int i = 0; i < 3; ++i) affine.SetRow(i, rows[i]);
  VRELPoint3D p(1.0, -1.0, 2.0);
  p.Transform(affine);
  EXPECT_EQ(Coordinates(p), (Values{5.0, 11.0, 19.0}));
}

// One pass from the last coordinate: y and z are swapped if z is larger, then x and y.
TEST(VRELPoint3DTest, OrthogonalizeSwapsSignedNeighboursOnce) {
  struct {
    VRELPoint3D point;
    Values expected;
  } const rows[] = {
      {{9.0, 4.0, 3.0}, {0.0, 0.6, -0.8}},    // no swap: (0, 3, -4) / 5
      {{9.0, 3.0, 4.0}, {0.0, -0.8, 0.6}},    // y with z: a = 9, 4, 3 at 0, 2, 1
      {{4.0, 9.0, 3.0}, {0.6, 0.0, -0.8}},    // x with y: a = 9, 4, 3 at 1, 0, 2: v1 = 3 at 0, v2 = -4 at 2
      {{4.0, 3.0, 9.0}, {0.6, -0.8, 0.0}},    // y with z, then x with y: a = 9, 4, 3 at 2, 0, 1
      {{3.0, 4.0, 9.0}, {0.8, -0.6, 0.0}},    // both swaps, and no third: a = 9, 3, 4 at 2, 0, 1
      {{1.0, -3.0, -4.0}, {0.0, -0.8, 0.6}},  // signed: no swap, a = 1, -3, -4
      {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}},
      {{0.0, 0.0, 0.0}, {0.0, 1.0, 0.0}},
      {{0.0, 0.0, 1.0}, {1.0, 0.0, 0.0}},  // a = 1, 0, 0 at 2, 0, 1: the 1 is at the position of the second
      {{0.0, 1.0, 0.0}, {1.0, 0.0, 0.0}},
      {{5.0, 1e-11, -1e-11}, {0.0, 1.0, -1e-11}},  // too short to be divided
      // Lengths of 7.3e-11 and 5.8e-10, below and above the tolerance of 1e-10.
      {{5.0, std::ldexp(4.0, -36), std::ldexp(3.0, -36)}, {0.0, 1.0, -std::ldexp(4.0, -36)}},
      {{5.0, std::ldexp(4.0, -33), std::ldexp(3.0, -33)}, {0.0, 0.6, -0.8}},
  };
  for (auto const& [point, expected] : rows) {
    SCOPED_TRACE(testing::PrintToString(Coordinates(point)));
    EXPECT_EQ(Coordinates(point.Orthogonalize()), expected);
  }
}

class RecordingPoint : public VRELPoint3D {
 public:
  using VRELPoint3D::VRELPoint3D;
  void Transform(VRELAffine3D const&) override { ++affines; }
  void Transform(VRELMorph3D const&, bool) override { ++morphs; }
  int affines = 0;
  int morphs = 0;
};

TEST(VRELPoint3DTest, TransformCanBeOverridden) {
  RecordingPoint recording;
  VRELPoint3D& point = recording;
  point.Transform(VRELAffine3D());
  point.Transform(VRELMorph3D(2.0), false);
  EXPECT_EQ(recording.affines, 1);
  EXPECT_EQ(recording.morphs, 1);
}

TEST(VRELPoint3DTest, TransformAllEqualsTransformOfEach) {
  VRELMorph3D morph(VRELPoint3D(0.5, 1.5, -2.0));
  morph.setScale(3.0);
  for (bool noTranslation : {false, true}) {
    VRELPoint3D points[] = {VRELPoint3D(1.0, 2.0, 3.0), VRELPoint3D(), VRELPoint3D(7.0, 8.0, 9.0)};
    VRELPoint3D::TransformAll(points, 2, morph, noTranslation);
    VRELPoint3D first(1.0, 2.0, 3.0);
    VRELPoint3D second;
    first.Transform(morph, noTranslation);
    second.Transform(morph, noTranslation);
    EXPECT_EQ(points[0], first);
    EXPECT_EQ(points[1], second);
    EXPECT_EQ(points[2], VRELPoint3D(7.0, 8.0, 9.0));
  }
  VRELPoint3D::TransformAll(nullptr, 5, morph, false);
}

TEST(VRELPoint3DTest, CopyFromKeepsReferenceCount) {
  VRELPoint3DHandle handle(new VRELPoint3D(1.0, 2.0, 3.0));
  VRELPoint3DHandle const second(handle);
  handle->CopyFrom(VRELPoint3D(7.0, 8.0, 9.0));
  EXPECT_EQ(handle->GetReferenceCount(), 2U);
  EXPECT_EQ(*second, VRELPoint3D(7.0, 8.0, 9.0));
  handle->CopyFrom(*handle);
  EXPECT_EQ(*second, VRELPoint3D(7.0, 8.0, 9.0));
}

TEST(VRELPoint3DTest, ComparesExactly) {
  EXPECT_TRUE(VRELPoint3D(1.0, 2.0, 3.0) == VRELPoint3D(1.0, 2.0, 3.0));
  EXPECT_FALSE(VRELPoint3D(1.0, 2.0, 3.0) != VRELPoint3D(1.0, 2.0, 3.0));
  VRELPoint3D other(1.0, 2.0, 3.0);
  other[2] += 1e-12;
  EXPECT_TRUE(VRELPoint3D(1.0, 2.0, 3.0) != other);
  other[0] = notANumber;
  EXPECT_FALSE(other == other);
}

}  // namespace
