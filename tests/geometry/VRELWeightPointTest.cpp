// Tests what VRELWeightPoint2D and VRELWeightPoint3D have in common.
#include "VRELWeightPoint.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "Coordinates.h"
#include "PollsAbort.h"
#include "VRELWeightPoint2D.h"
#include "VRELWeightPoint3D.h"

namespace {

using Values = std::vector<double>;

struct Flat {
  using Weighted = VRELWeightPoint2D;
  using Plain = VRELPoint2D;
  static Plain Make(double x, double y, double /*z*/) { return Plain(x, y); }
};
struct Solid {
  using Weighted = VRELWeightPoint3D;
  using Plain = VRELPoint3D;
  static Plain Make(double x, double y, double z) { return Plain(x, y, z); }
};

template <class Kind>
class VRELWeightPointTest : public testing::Test {
 protected:
  using Weighted = typename Kind::Weighted;
  using Plain = typename Kind::Plain;

  // Returns as many coordinates as the point has, and the weight.
  static Values All(double x, double y, double z, double weight) {
    return Weighted().GetDimension() == 2 ? Values{x, y, weight} : Values{x, y, z, weight};
  }
  static Values All(Weighted const& point) { return Coordinates(point, point.GetDimension() + 1); }
  // Stores the coordinates without multiplying them by the weight.
  static Weighted Stored(double x, double y, double z, double weight) {
    return Weighted(Kind::Make(x, y, z), weight, false);
  }
};
using Kinds = testing::Types<Flat, Solid>;
TYPED_TEST_SUITE(VRELWeightPointTest, Kinds, );

TYPED_TEST(VRELWeightPointTest, StoresWeightedCoordinates) {
  using Point = typename TypeParam::Weighted;
  Point const multiplied(TypeParam::Make(1.0, 2.0, 3.0), 2.0, true);
  EXPECT_EQ(this->All(multiplied), this->All(2.0, 4.0, 6.0, 2.0));
  EXPECT_EQ(multiplied.GetWeight(), 2.0);
  EXPECT_EQ(Coordinates(multiplied.GetWeightedCoords()), Coordinates(TypeParam::Make(2.0, 4.0, 6.0)));
  EXPECT_EQ(Coordinates(multiplied.GetCoords()), Coordinates(TypeParam::Make(1.0, 2.0, 3.0)));
  Point const asItIs(TypeParam::Make(1.0, 2.0, 3.0), 2.0, false);
  EXPECT_EQ(this->All(asItIs), this->All(1.0, 2.0, 3.0, 2.0));
  EXPECT_EQ(Coordinates(asItIs.GetCoords()), Coordinates(TypeParam::Make(0.5, 1.0, 1.5)));
  Point const zeroWeight(TypeParam::Make(1.0, 2.0, 3.0), 0.0, true);
  EXPECT_EQ(this->All(zeroWeight), this->All(0.0, 0.0, 0.0, 0.0));
}

TYPED_TEST(VRELWeightPointTest, DefaultIsZeroWithWeightOne) {
  using Point = typename TypeParam::Weighted;
  EXPECT_EQ(this->All(Point()), this->All(0.0, 0.0, 0.0, 1.0));
  EXPECT_EQ(this->All(Point(2.5)), this->All(0.0, 0.0, 0.0, 2.5));
}

TYPED_TEST(VRELWeightPointTest, CopyKeepsWeight) {
  auto const p = this->Stored(1.0, 2.0, 3.0, 4.0);
  auto const copy(p);
  EXPECT_EQ(this->All(copy), this->All(1.0, 2.0, 3.0, 4.0));
  typename TypeParam::Weighted assigned;
  assigned.RaiseReference();
  EXPECT_EQ(&(assigned = p), &assigned);
  EXPECT_EQ(this->All(assigned), this->All(1.0, 2.0, 3.0, 4.0));
  EXPECT_EQ(assigned.GetReferenceCount(), 0U);
}

TYPED_TEST(VRELWeightPointTest, IndexAboveCoordinatesIsWeight) {
  auto p = this->Stored(1.0, 2.0, 3.0, 4.0);
  auto const& constant = p;
  int const dimension = p.GetDimension();
  for (int i : {dimension, dimension + 1, 5, INT_MAX}) {
    EXPECT_EQ(constant[i], 4.0);
    EXPECT_EQ(&p[i], &p[dimension]);
  }
  EXPECT_EQ(constant[-1], 1.0);
  EXPECT_EQ(constant[INT_MIN], 1.0);
  EXPECT_EQ(constant[dimension - 1], dimension == 2 ? 2.0 : 3.0);
  p[dimension] = 9.0;
  EXPECT_EQ(p.GetWeight(), 9.0);
}

TYPED_TEST(VRELWeightPointTest, SetWeightKeepsCoordinates) {
  auto p = this->Stored(1.0, 2.0, 3.0, 4.0);
  p.SetWeight(8.0);
  EXPECT_EQ(this->All(p), this->All(1.0, 2.0, 3.0, 8.0));
  p.SetWeightedCoords(TypeParam::Make(5.0, 6.0, 7.0));
  EXPECT_EQ(this->All(p), this->All(5.0, 6.0, 7.0, 8.0));
}

TYPED_TEST(VRELWeightPointTest, GetCoordsOfZeroWeightIsUndivided) {
  for (double weight : {0.0, -0.0, 1.0}) {
    EXPECT_EQ(Coordinates(this->Stored(1.0, 2.0, 3.0, weight).GetCoords()),
              Coordinates(TypeParam::Make(1.0, 2.0, 3.0)));
  }
}

TYPED_TEST(VRELWeightPointTest, GetCoordsDividesExactly) {
  EXPECT_EQ(this->Stored(49.0, 0.0, 0.0, 49.0).GetCoords()[0],
            1.0);  // 49 * (1 / 49) is one unit in the last place below 1
}

TYPED_TEST(VRELWeightPointTest, LengthIncludesWeight) {
  EXPECT_EQ(this->Stored(2.0, 4.0, 5.0, 2.0).Length(),
            TypeParam::Make(0.0, 0.0, 0.0).GetDimension() == 2 ? std::sqrt(24.0) : 7.0);
}

TYPED_TEST(VRELWeightPointTest, DistanceIgnoresWeight) {
  EXPECT_EQ(this->Stored(1.0, 2.0, 3.0, 4.0).DistanceTo(this->Stored(4.0, 6.0, 3.0, 400.0)), 5.0);
}

TYPED_TEST(VRELWeightPointTest, ToleranceIgnoresWeight) {
  auto const p = this->Stored(1.0, 2.0, 3.0, 4.0);
  EXPECT_TRUE(p.IsWithinTolerance(this->Stored(1.0, 2.0, 3.0, 400.0), 0.0));
  EXPECT_TRUE(p.IsWithinTolerance(this->Stored(1.0, 2.0, 3.0, 400.0), this->Stored(0.0, 0.0, 0.0, 0.0)));
}

TYPED_TEST(VRELWeightPointTest, ArithmeticIncludesWeight) {
  auto p = this->Stored(1.0, 2.0, 3.0, 4.0);
  auto const q = this->Stored(10.0, 20.0, 30.0, 40.0);
  VRELPoint& base = p;
  base.Add(q);
  EXPECT_EQ(this->All(p), this->All(11.0, 22.0, 33.0, 44.0));
  base.Substract(q);
  EXPECT_EQ(this->All(p), this->All(1.0, 2.0, 3.0, 4.0));
  base.Multiply(3.0);
  EXPECT_EQ(this->All(p), this->All(3.0, 6.0, 9.0, 12.0));
  base.Divide(3.0);
  EXPECT_EQ(this->All(p), this->All(1.0, 2.0, 3.0, 4.0));
  base.Divide(0.0);
  EXPECT_EQ(this->All(p), this->All(1.0, 2.0, 3.0, 4.0));
  base.Negate();
  EXPECT_EQ(this->All(p), this->All(-1.0, -2.0, -3.0, -4.0));
  EXPECT_EQ(&(p += q), &p);
  EXPECT_EQ(this->All(p), this->All(9.0, 18.0, 27.0, 36.0));
  EXPECT_EQ(&(p -= this->Stored(1.0, 2.0, 3.0, 4.0)), &p);
  EXPECT_EQ(this->All(p), this->All(8.0, 16.0, 24.0, 32.0));
  EXPECT_EQ(&(p /= 8.0), &p);
  EXPECT_EQ(this->All(p), this->All(1.0, 2.0, 3.0, 4.0));
  EXPECT_EQ(&(p /= 0.0), &p);
  EXPECT_EQ(this->All(p), this->All(1.0, 2.0, 3.0, 4.0));
  EXPECT_EQ(&(p *= 2.0), &p);
  EXPECT_EQ(this->All(p), this->All(2.0, 4.0, 6.0, 8.0));
}

TYPED_TEST(VRELWeightPointTest, ShiftMovesStoredValues) {
  auto p = this->Stored(1.0, 2.0, 3.0, 4.0);
  p.Shift(TypeParam::Make(10.0, 20.0, 30.0));
  EXPECT_EQ(this->All(p), this->All(11.0, 22.0, 33.0, 4.0));
  p.Shift(this->Stored(1.0, 2.0, 3.0, 4.0));
  EXPECT_EQ(this->All(p), this->All(12.0, 24.0, 36.0, 8.0));
}

// A plain point has no weight; operator[] clamps, so that its last coordinate is used.
TYPED_TEST(VRELWeightPointTest, PlainPointRepeatsLastCoordinate) {
  auto p = this->Stored(1.0, 2.0, 3.0, 4.0);
  p.Add(TypeParam::Make(10.0, 20.0, 30.0));
  double const last = p.GetDimension() == 2 ? 20.0 : 30.0;
  EXPECT_EQ(this->All(p), this->All(11.0, 22.0, 33.0, 4.0 + last));
  p.Substract(TypeParam::Make(10.0, 20.0, 30.0));
  EXPECT_EQ(this->All(p), this->All(1.0, 2.0, 3.0, 4.0));
}

TYPED_TEST(VRELWeightPointTest, CopyInCopiesWeight) {
  auto const p = this->Stored(1.0, 2.0, 3.0, 4.0);
  typename TypeParam::Weighted target;
  p.CopyIn(target);
  EXPECT_EQ(this->All(target), this->All(1.0, 2.0, 3.0, 4.0));
  typename TypeParam::Plain plain;
  p.CopyIn(plain);
  EXPECT_EQ(Coordinates(plain), Coordinates(TypeParam::Make(1.0, 2.0, 3.0)));
}

TYPED_TEST(VRELWeightPointTest, CheckedOperationsPollAbortFirst) {
  auto p = this->Stored(1.0, 2.0, 3.0, 4.0);
  auto target = this->Stored(5.0, 6.0, 7.0, 8.0);
  EXPECT_TRUE(PollsAbort([&] { p.Add(target); }));
  EXPECT_TRUE(PollsAbort([&] { p.Substract(target); }));
  EXPECT_TRUE(PollsAbort([&] { p.CopyIn(target); }));
  EXPECT_EQ(this->All(p), this->All(1.0, 2.0, 3.0, 4.0));
  EXPECT_EQ(this->All(target), this->All(5.0, 6.0, 7.0, 8.0));
  EXPECT_FALSE(PollsAbort([&] { p += target; }));
}

TYPED_TEST(VRELWeightPointTest, CopyFromKeepsReferenceCount) {
  using Point = typename TypeParam::Weighted;
  Point point = this->Stored(1.0, 2.0, 3.0, 4.0);
  point.RaiseReference();
  point.CopyFrom(this->Stored(5.0, 6.0, 7.0, 8.0));
  EXPECT_EQ(this->All(point), this->All(5.0, 6.0, 7.0, 8.0));
  EXPECT_EQ(point.GetReferenceCount(), 1U);
}

TYPED_TEST(VRELWeightPointTest, ComparesCoordinatesAndWeight) {
  EXPECT_TRUE(this->Stored(1.0, 2.0, 3.0, 4.0) == this->Stored(1.0, 2.0, 3.0, 4.0));
  EXPECT_TRUE(this->Stored(1.0, 2.0, 3.0, 4.0) != this->Stored(1.0, 2.0, 3.0, 5.0));
  EXPECT_TRUE(this->Stored(1.0, 2.0, 3.0, 4.0) != this->Stored(1.0, 9.0, 3.0, 4.0));
}

}  // namespace
