// Tests what VRELPoint2D and VRELPoint3D have in common.
#include "detail/VRELPlainPoint.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>

#include "Coordinates.h"
#include "VRELPoint2D.h"
#include "VRELPoint3D.h"

namespace {

using Values = std::vector<double>;

template <class Point>
Point Make(double x, double y, double z);
template <>
VRELPoint2D Make(double x, double y, double /*z*/) {
  return VRELPoint2D(x, y);
}
template <>
VRELPoint3D Make(double x, double y, double z) {
  return VRELPoint3D(x, y, z);
}

template <class Point>
class VRELPlainPointTest : public testing::Test {
 protected:
  // Returns as many of the values as the point has coordinates.
  static Values First(double x, double y, double z) {
    Values values{x, y, z};
    values.resize(static_cast<std::size_t>(Point().GetDimension()));
    return values;
  }
};
using Points = testing::Types<VRELPoint2D, VRELPoint3D>;
TYPED_TEST_SUITE(VRELPlainPointTest, Points, );

TYPED_TEST(VRELPlainPointTest, DefaultIsZero) {
  EXPECT_EQ(Coordinates(TypeParam()), this->First(0.0, 0.0, 0.0));
}

TYPED_TEST(VRELPlainPointTest, CopyIsDeep) {
  auto const p = Make<TypeParam>(1.0, 2.0, 3.0);
  TypeParam const copy(p);
  EXPECT_EQ(Coordinates(copy), this->First(1.0, 2.0, 3.0));
  TypeParam assigned;
  EXPECT_EQ(&(assigned = p), &assigned);
  EXPECT_EQ(Coordinates(assigned), this->First(1.0, 2.0, 3.0));
  std::unique_ptr<TypeParam> const heap(p.Copy());
  EXPECT_NE(heap.get(), &p);
  EXPECT_EQ(Coordinates(*heap), this->First(1.0, 2.0, 3.0));
  EXPECT_EQ(heap->GetReferenceCount(), 0U);
}

TYPED_TEST(VRELPlainPointTest, CompoundAssignment) {
  auto p = Make<TypeParam>(1.0, 2.0, 3.0);
  auto const q = Make<TypeParam>(10.0, 20.0, 30.0);
  EXPECT_EQ(&(p += q), &p);
  EXPECT_EQ(Coordinates(p), this->First(11.0, 22.0, 33.0));
  EXPECT_EQ(&(p -= q), &p);
  EXPECT_EQ(Coordinates(p), this->First(1.0, 2.0, 3.0));
  EXPECT_EQ(&(p *= 4.0), &p);
  EXPECT_EQ(Coordinates(p), this->First(4.0, 8.0, 12.0));
  EXPECT_EQ(&(p /= 8.0), &p);
  EXPECT_EQ(Coordinates(p), this->First(0.5, 1.0, 1.5));
  p.Shift(q);
  EXPECT_EQ(Coordinates(p), this->First(10.5, 21.0, 31.5));
  p += p;
  EXPECT_EQ(Coordinates(p), this->First(21.0, 42.0, 63.0));
}

TYPED_TEST(VRELPlainPointTest, OperatorsReturnNewPoints) {
  auto const p = Make<TypeParam>(1.0, 2.0, 3.0);
  auto const q = Make<TypeParam>(10.0, 20.0, 30.0);
  EXPECT_EQ(Coordinates(p + q), this->First(11.0, 22.0, 33.0));
  EXPECT_EQ(Coordinates(p - q), this->First(-9.0, -18.0, -27.0));
  EXPECT_EQ(Coordinates(-p), this->First(-1.0, -2.0, -3.0));
  EXPECT_EQ(Coordinates(p * 2.0), this->First(2.0, 4.0, 6.0));
  EXPECT_EQ(Coordinates(2.0 * p), this->First(2.0, 4.0, 6.0));
  EXPECT_EQ(Coordinates(p / 4.0), this->First(0.25, 0.5, 0.75));
  EXPECT_EQ(Coordinates(p), this->First(1.0, 2.0, 3.0));
}

TYPED_TEST(VRELPlainPointTest, DivisionByZeroDoesNothing) {
  auto p = Make<TypeParam>(1.0, 2.0, 3.0);
  EXPECT_EQ(Coordinates(p / 0.0), this->First(1.0, 2.0, 3.0));
  p /= -0.0;
  EXPECT_EQ(Coordinates(p), this->First(1.0, 2.0, 3.0));
}

TYPED_TEST(VRELPlainPointTest, DivisionIsExact) {
  auto const third = Make<TypeParam>(49.0, 49.0, 49.0) / 49.0;
  EXPECT_EQ(third[0], 1.0);  // 49 * (1 / 49) is one unit in the last place below 1
}

TYPED_TEST(VRELPlainPointTest, ScalarProduct) {
  double const expected = TypeParam().GetDimension() == 2 ? 50.0 : 140.0;
  EXPECT_EQ(Make<TypeParam>(1.0, 2.0, 3.0) * Make<TypeParam>(10.0, 20.0, 30.0), expected);
}

TYPED_TEST(VRELPlainPointTest, NormalizeHasNoTolerance) {
  EXPECT_EQ(Coordinates(Make<TypeParam>(0.0, -4.0, 0.0).Normalize()), this->First(0.0, -1.0, 0.0));
  EXPECT_EQ(Coordinates(Make<TypeParam>(1e-150, 0.0, 0.0).Normalize()), this->First(1.0, 0.0, 0.0));
  EXPECT_EQ(Coordinates(TypeParam().Normalize()), this->First(0.0, 0.0, 0.0));
  // The square underflows, so that the length is exactly 0.
  EXPECT_EQ(Coordinates(Make<TypeParam>(1e-200, 0.0, 0.0).Normalize()), this->First(1e-200, 0.0, 0.0));
  EXPECT_TRUE(std::isnan(Make<TypeParam>(infinity, 0.0, 0.0).Normalize()[0]));
  EXPECT_TRUE(std::isnan(Make<TypeParam>(notANumber, 1.0, 0.0).Normalize()[1]));
}

TYPED_TEST(VRELPlainPointTest, OrthogonalizeIsPerpendicularUnit) {
  std::mt19937 random(81);
  std::uniform_real_distribution<double> uniform(-100.0, 100.0);
  for (int round = 0; round < 2000; ++round) {
    auto const p = Make<TypeParam>(uniform(random), uniform(random), uniform(random));
    auto const q = p.Orthogonalize();
    ASSERT_NEAR(p * q, 0.0, 1e-11);
    ASSERT_NEAR(q * q, 1.0, 1e-14);
  }
}

}  // namespace
