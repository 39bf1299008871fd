#include "VRELPoint2D.h"

#include <gtest/gtest.h>

#include <cmath>
#include <type_traits>

#include "Coordinates.h"
#include "VRELAffine2D.h"
#include "VRELMorph2D.h"
#include "VRELPoint2DHandle.h"
#include "VirtualSlot.h"

namespace {

using Values = std::vector<double>;

TEST(VRELPoint2DTest, TransformSlotsFollowBase) {
  static_assert(std::is_base_of_v<VRELPoint, VRELPoint2D>);
  void (VRELPoint2D::*const byAffine)(VRELAffine2D const&) = &VRELPoint2D::Transform;
  void (VRELPoint2D::*const byMorph)(VRELMorph2D const&, bool) = &VRELPoint2D::Transform;
  EXPECT_EQ(SlotOf(byAffine), 15U);
  EXPECT_EQ(SlotOf(byMorph), 16U);
}

TEST(VRELPoint2DTest, TransformByAffineUsesRows) {
  VRELAffine2D affine;
  double const rows[2][2] = {{1.0, 2.0}, {3.0, 4.0}};
  for (int i = 0; i < 2; ++i) affine.SetRow(i, rows[i]);
  VRELPoint2D p(5.0, 6.0);
  p.Transform(affine);
  EXPECT_EQ(Coordinates(p), (Values{17.0, 39.0}));
}

// Signed coordinates are swapped; (p, q) becomes (q, -p).
TEST(VRELPoint2DTest, OrthogonalizeSwapsSignedNeighbours) {
  struct {
    VRELPoint2D point;
    Values expected;
  } const rows[] = {
      {{3.0, 4.0}, {-0.8, 0.6}},    // swapped: a = 4, 3 at 1, 0
      {{4.0, 3.0}, {0.6, -0.8}},    // not swapped
      {{3.0, -4.0}, {-0.8, -0.6}},  // not swapped: no absolute values
      {{-1.0, 0.0}, {0.0, -1.0}},   // swapped: a = 0, -1 at 1, 0
      {{0.0, 0.0}, {0.0, 1.0}},
      {{1e-11, 0.0}, {0.0, 1.0}},                                   // too short to be divided
      {{0.0, 1e-11}, {1.0, 0.0}},                                   // the same, swapped
      {{std::ldexp(4.0, -33), std::ldexp(3.0, -33)}, {0.6, -0.8}},  // long enough
  };
  for (auto const& [point, expected] : rows) {
    SCOPED_TRACE(testing::PrintToString(Coordinates(point)));
    EXPECT_EQ(Coordinates(point.Orthogonalize()), expected);
  }
}

class RecordingPoint : public VRELPoint2D {
 public:
  using VRELPoint2D::VRELPoint2D;
  void Transform(VRELAffine2D const&) override { ++affines; }
  void Transform(VRELMorph2D const&, bool) override { ++morphs; }
  int affines = 0;
  int morphs = 0;
};

TEST(VRELPoint2DTest, TransformCanBeOverridden) {
  RecordingPoint recording;
  VRELPoint2D& point = recording;
  point.Transform(VRELAffine2D());
  point.Transform(VRELMorph2D(2.0), false);
  EXPECT_EQ(recording.affines, 1);
  EXPECT_EQ(recording.morphs, 1);
}

TEST(VRELPoint2DTest, TransformAllEqualsTransformOfEach) {
  VRELMorph2D morph(VRELPoint2D(0.5, 1.5));
  morph.setScale(3.0);
  for (bool noTranslation : {false, true}) {
    VRELPoint2D points[] = {VRELPoint2D(1.0, 2.0), VRELPoint2D(), VRELPoint2D(7.0, 8.0)};
    VRELPoint2D::TransformAll(points, 2, morph, noTranslation);
    VRELPoint2D first(1.0, 2.0);
    VRELPoint2D second;
    first.Transform(morph, noTranslation);
    second.Transform(morph, noTranslation);
    EXPECT_EQ(points[0], first);
    EXPECT_EQ(points[1], second);
    EXPECT_EQ(points[2], VRELPoint2D(7.0, 8.0));
  }
  VRELPoint2D::TransformAll(nullptr, 5, morph, false);
}

TEST(VRELPoint2DTest, CopyFromKeepsReferenceCount) {
  VRELPoint2DHandle handle(new VRELPoint2D(1.0, 2.0));
  VRELPoint2DHandle const second(handle);
  handle->CopyFrom(VRELPoint2D(7.0, 8.0));
  EXPECT_EQ(handle->GetReferenceCount(), 2U);
  EXPECT_EQ(*second, VRELPoint2D(7.0, 8.0));
  handle->CopyFrom(*handle);
  EXPECT_EQ(*second, VRELPoint2D(7.0, 8.0));
}

TEST(VRELPoint2DTest, ComparesExactly) {
  EXPECT_TRUE(VRELPoint2D(1.0, 2.0) == VRELPoint2D(1.0, 2.0));
  EXPECT_FALSE(VRELPoint2D(1.0, 2.0) != VRELPoint2D(1.0, 2.0));
  VRELPoint2D other(1.0, 2.0);
  other[1] += 1e-12;
  EXPECT_TRUE(VRELPoint2D(1.0, 2.0) != other);
  other[0] = notANumber;
  EXPECT_FALSE(other == other);
}

}  // namespace
