#include "VRELPoint2D.h"

#include <gtest/gtest.h>

#include <cmath>
#include <type_traits>

#include "Coordinates.h"
#include "VRELAffine2D.h"
#include "VRELMorph2D.h"
#include "VirtualSlot.h"

namespace {

using Values = std::vector<double>;

TEST(VRELPoint2DTest, TransformsStandBehindTheSlotsOfTheBase) {
  static_assert(std::is_base_of_v<VRELPoint, VRELPoint2D>);
  void (VRELPoint2D::*const byAffine)(VRELAffine2D const&) = &VRELPoint2D::Transform;
  void (VRELPoint2D::*const byMorph)(VRELMorph2D const&, bool) = &VRELPoint2D::Transform;
  EXPECT_EQ(SlotOf(byAffine), 15U);
  EXPECT_EQ(SlotOf(byMorph), 16U);
}

TEST(VRELPoint2DTest, AnAffineIsTakenRowByRow) {
  VRELAffine2D affine;
  double const rows[2][2] = {{1.0, 2.0}, {3.0, 4.0}};
  for (int i = 0; i < 2; ++i) affine.SetRow(i, rows[i]);
  VRELPoint2D p(5.0, 6.0);
  p.Transform(affine);
  EXPECT_EQ(Coordinates(p), (Values{17.0, 39.0}));
}

// The exchanges look at signed values, and the two that remain are turned against each other.
TEST(VRELPoint2DTest, OrthogonalizeExchangesSignedNeighbours) {
  struct {
    VRELPoint2D point;
    Values expected;
  } const rows[] = {
      {{3.0, 4.0}, {-0.8, 0.6}},    // exchanged: a = 4, 3 at 1, 0
      {{4.0, 3.0}, {0.6, -0.8}},    // as it is
      {{3.0, -4.0}, {-0.8, -0.6}},  // as it is: no absolute values
      {{-1.0, 0.0}, {0.0, -1.0}},   // exchanged: a = 0, -1 at 1, 0
      {{0.0, 0.0}, {0.0, 1.0}},
      {{1e-11, 0.0}, {0.0, 1.0}},                                   // too short to be divided
      {{0.0, 1e-11}, {1.0, 0.0}},                                   // the same, exchanged
      {{std::ldexp(4.0, -33), std::ldexp(3.0, -33)}, {0.6, -0.8}},  // long enough
  };
  for (auto const& [point, expected] : rows) {
    SCOPED_TRACE(testing::PrintToString(Coordinates(point)));
    EXPECT_EQ(Coordinates(point.Orthogonalize()), expected);
  }
}

}  // namespace
