#include "VRELPointf.h"

#include <gtest/gtest.h>

#include <cmath>
#include <type_traits>

#include "Coordinates.h"
#include "VRELVectorf.h"

namespace {

using FloatValues = std::vector<float>;

TEST(VRELPointfTest, IsThreeFloats) {
  static_assert(sizeof(VRELPointf) == 12);
  static_assert(!std::is_polymorphic_v<VRELPointf>);
  static_assert(std::is_trivially_copyable_v<VRELPointf>);
  EXPECT_EQ(Floats(VRELPointf()), (FloatValues{0.0F, 0.0F, 0.0F}));
  EXPECT_EQ(Floats(VRELPointf(1.0F, 2.0F, 3.0F)), (FloatValues{1.0F, 2.0F, 3.0F}));
  EXPECT_EQ(Floats(VRELPointOf), (FloatValues{0.0F, 0.0F, 0.0F}));
}

TEST(VRELPointfTest, ConstructorAndGetValue) {
  float const in[] = {1.0F, 2.0F, 3.0F};
  VRELPointf const p(in);
  EXPECT_EQ(Floats(p), (FloatValues{1.0F, 2.0F, 3.0F}));
  float out[] = {0.0F, 0.0F, 0.0F, 99.0F};
  p.GetValue(out);
  EXPECT_EQ(FloatValues(out, out + 4), (FloatValues{1.0F, 2.0F, 3.0F, 99.0F}));
}

TEST(VRELPointfTest, NullIsOrigin) {
  VRELPointf const p(static_cast<float const*>(nullptr));
  EXPECT_EQ(Floats(p), (FloatValues{0.0F, 0.0F, 0.0F}));
  p.GetValue(nullptr);
}

TEST(VRELPointfTest, SumsOfPointsAndVectors) {
  VRELPointf const p(1.0F, 2.0F, 3.0F);
  VRELVectorf const v(10.0F, 20.0F, 30.0F);
  EXPECT_EQ(Floats(p + v), (FloatValues{11.0F, 22.0F, 33.0F}));
  EXPECT_EQ(Floats(p - v), (FloatValues{-9.0F, -18.0F, -27.0F}));
  VRELVectorf const difference = p - VRELPointf(0.5F, 4.0F, -1.0F);
  EXPECT_EQ(Floats(difference), (FloatValues{0.5F, -2.0F, 4.0F}));
}

TEST(VRELPointfTest, EqualityNeedsEqualXAndDifferentYZ) {
  VRELPointf const p(1.0F, 2.0F, 3.0F);
  EXPECT_FALSE(p == p);
  EXPECT_FALSE(p == VRELPointf(1.0F, 2.0F, 3.0F));
  EXPECT_TRUE(p == VRELPointf(1.0F, 5.0F, 7.0F));
  EXPECT_FALSE(p == VRELPointf(1.0F, 2.0F, 7.0F));
  EXPECT_FALSE(p == VRELPointf(1.0F, 5.0F, 3.0F));
  EXPECT_FALSE(p == VRELPointf(0.0F, 5.0F, 7.0F));
}

TEST(VRELPointfTest, Distances) {
  VRELPointf const p(1.0F, 2.0F, 3.0F);
  VRELPointf const q(3.0F, -1.0F, 9.0F);
  EXPECT_EQ(p.DistanceTo(q), 7.0F);
  EXPECT_EQ(p.DistanceL1To(q), 11.0F);
  EXPECT_EQ(p.DistanceTo(p), 0.0F);
  EXPECT_TRUE(std::isinf(p.DistanceTo(VRELPointf(1e30F, 0.0F, 0.0F))));
}

TEST(VRELPointfTest, MinimumAndMaximum) {
  VRELPointf low(1.0F, 5.0F, 3.0F);
  VRELPointf high(low);
  low.GetMinimum(VRELPointf(2.0F, 4.0F, 3.0F));
  high.GetMaximum(VRELPointf(2.0F, 4.0F, 3.5F));
  EXPECT_EQ(Floats(low), (FloatValues{1.0F, 4.0F, 3.0F}));
  EXPECT_EQ(Floats(high), (FloatValues{2.0F, 5.0F, 3.5F}));
}

TEST(VRELPointfTest, IsEqualComparesAllCoordinates) {
  VRELPointf const point(1.0F, 2.0F, 3.0F);
  EXPECT_TRUE(point.IsEqual(point));
  EXPECT_FALSE(point.IsEqual(VRELPointf(1.0F, 2.0F, 4.0F)));
  EXPECT_FALSE(point.IsEqual(VRELPointf(1.0F, 5.0F, 3.0F)));
  EXPECT_FALSE(point.IsEqual(VRELPointf(0.0F, 2.0F, 3.0F)));
}

}  // namespace
