#include "VRELVectorf.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <type_traits>

#include "Coordinates.h"
#include "Gk_Def.h"
#include "VRELDirectionf.h"
#include "VRELNormalizef.h"

namespace {

using FloatValues = std::vector<float>;

TEST(VRELVectorfTest, IsThreeFloats) {
  static_assert(sizeof(VRELVectorf) == 12);
  static_assert(!std::is_polymorphic_v<VRELVectorf>);
  static_assert(std::is_trivially_copyable_v<VRELVectorf>);
  EXPECT_EQ(Floats(VRELVectorf()), (FloatValues{0.0F, 0.0F, 0.0F}));
}

TEST(VRELVectorfTest, Constants) {
  EXPECT_EQ(Floats(VRELNullVectorf), (FloatValues{0.0F, 0.0F, 0.0F}));
  EXPECT_EQ(Floats(VRELVectorIf), (FloatValues{1.0F, 0.0F, 0.0F}));
  EXPECT_EQ(Floats(VRELVectorJf), (FloatValues{0.0F, 1.0F, 0.0F}));
  EXPECT_EQ(Floats(VRELVectorKf), (FloatValues{0.0F, 0.0F, 1.0F}));
}

TEST(VRELVectorfTest, Constructors) {
  float const in[] = {1.0F, 2.0F, 3.0F};
  EXPECT_EQ(Floats(VRELVectorf(1.0F, 2.0F, 3.0F)), (FloatValues{1.0F, 2.0F, 3.0F}));
  EXPECT_EQ(Floats(VRELVectorf(in)), (FloatValues{1.0F, 2.0F, 3.0F}));
  EXPECT_EQ(Floats(VRELVectorf(static_cast<float const*>(nullptr))), (FloatValues{0.0F, 0.0F, 0.0F}));
  EXPECT_EQ(Floats(VRELVectorf(VRELPointf(1.0F, 2.0F, 3.0F), VRELPointf(5.0F, 5.0F, 5.0F))),
            (FloatValues{4.0F, 3.0F, 2.0F}));
  EXPECT_EQ(Floats(VRELVectorf(VRELDirectionf(0.0F, -5.0F, 0.0F))), (FloatValues{0.0F, -1.0F, 0.0F}));
}

TEST(VRELVectorfTest, CoordinatesRoundTrip) {
  VRELVectorf v;
  v.SetCoord(1.0F, 2.0F, 3.0F);
  float x = 0.0F;
  float y = 0.0F;
  float z = 0.0F;
  v.GetCoord(x, y, z);
  EXPECT_EQ((FloatValues{x, y, z}), (FloatValues{1.0F, 2.0F, 3.0F}));
}

TEST(VRELVectorfTest, Arithmetic) {
  VRELVectorf const v(1.0F, 2.0F, 3.0F);
  VRELVectorf const w(4.0F, 5.0F, 7.0F);
  EXPECT_EQ(Floats(v + w), (FloatValues{5.0F, 7.0F, 10.0F}));
  EXPECT_EQ(Floats(v - w), (FloatValues{-3.0F, -3.0F, -4.0F}));
  EXPECT_EQ(Floats(-v), (FloatValues{-1.0F, -2.0F, -3.0F}));
  EXPECT_EQ(Floats(v * 2.0F), (FloatValues{2.0F, 4.0F, 6.0F}));
  EXPECT_EQ(Floats(2.0F * v), (FloatValues{2.0F, 4.0F, 6.0F}));
  EXPECT_EQ(Floats(v / 2.0F), (FloatValues{0.5F, 1.0F, 1.5F}));
  EXPECT_EQ(Floats(v + VRELPointf(1.0F, 1.0F, 1.0F)), (FloatValues{2.0F, 3.0F, 4.0F}));
  EXPECT_EQ(v * w, 35.0F);
  EXPECT_EQ(Floats(v ^ w), (FloatValues{-1.0F, 5.0F, -3.0F}));
  EXPECT_TRUE(std::isinf((v / 0.0F).X()));
}

TEST(VRELVectorfTest, ScalarProductRoundsToFloat) {
  // 1e8 + 1 is 1e8 in floats, so that the sum is 0.
  EXPECT_EQ(VRELVectorf(1e4F, 1.0F, 1e4F) * VRELVectorf(1e4F, 1.0F, -1e4F), 0.0F);
}

TEST(VRELVectorfTest, VectorProductRoundsToFloat) {
  // 10001 * 10001 is 100020000 in floats, as 10000 * 10002 is.
  EXPECT_EQ((VRELVectorf(0.0F, 10001.0F, 10000.0F) ^ VRELVectorf(0.0F, 10002.0F, 10001.0F)).X(), 0.0F);
}

TEST(VRELVectorfTest, NormIsEuclideanLength) {
  EXPECT_EQ(VRELVectorf(2.0F, -3.0F, 6.0F).Norm(), 7.0F);
  EXPECT_EQ(VRELNullVectorf.Norm(), 0.0F);
  EXPECT_TRUE(std::isinf(VRELVectorf(1e30F, 0.0F, 0.0F).Norm()));
  EXPECT_EQ(VRELVectorf(1e-30F, 0.0F, 0.0F).Norm(), 0.0F);
}

TEST(VRELVectorfTest, SquareRootsRoundToFloat) {
  EXPECT_EQ(VRELSqrtf(2.0F), 1.41421356F);
  EXPECT_EQ(VRELInvSqrtf(4.0F), 0.5F);
  EXPECT_TRUE(std::isinf(VRELInvSqrtf(0.0F)));
  EXPECT_TRUE(std::isnan(VRELSqrtf(-1.0F)));
}

TEST(VRELVectorfTest, NormalizeSetsLengthOne) {
  VRELVectorf v(0.0F, 0.0F, -4.0F);
  v.Normalize();
  EXPECT_EQ(Floats(v), (FloatValues{0.0F, 0.0F, -1.0F}));
  std::mt19937 random(82);
  std::uniform_real_distribution<float> uniform(-100.0F, 100.0F);
  for (int round = 0; round < 1000; ++round) {
    VRELVectorf any(uniform(random), uniform(random), uniform(random));
    any.Normalize();
    ASSERT_NEAR(any.Norm(), 1.0F, 3e-7F);
  }
}

TEST(VRELVectorfTest, NormalizeMultipliesByReciprocal) {
  VRELVectorf v(7.0F, 1.0F, 0.0F);
  v.Normalize();
  EXPECT_EQ(v.X(), 0.989949524F);  // 7 divided by the square root is 0.989949465
  EXPECT_EQ(VRELDirectionf(7.0F, 1.0F, 0.0F).X(), 0.989949524F);
}

TEST(VRELVectorfTest, NormalizeOfZeroIsXAxis) {
  FloatValues const xAxis{1.0F, 0.0F, 0.0F};
  VRELVectorf zero;
  zero.Normalize();
  EXPECT_EQ(Floats(zero), xAxis);
  // The squared length is compared with the float nearest to 1e-14, which is still taken as 0.
  float const limit = 1e-14F;
  float const root = 1e-7F;
  VRELVectorf shorter(0.0F, root, 0.0F);
  ASSERT_LE(root * root, limit);
  shorter.Normalize();
  EXPECT_EQ(Floats(shorter), xAxis);
  VRELVectorf longer(0.0F, 1.0001e-7F, 0.0F);
  longer.Normalize();
  EXPECT_FLOAT_EQ(longer.Y(), 1.0F);
  EXPECT_EQ(longer.X(), 0.0F);
}

TEST(VRELVectorfTest, NormalizeKeepsNaN) {
  VRELVectorf v(std::nanf(""), 1.0F, 0.0F);
  v.Normalize();
  EXPECT_TRUE(std::isnan(v.X()));
  EXPECT_TRUE(std::isnan(v.Y()));
  // An overflow of the length results in the zero vector.
  VRELVectorf huge(1e30F, 0.0F, 0.0F);
  huge.Normalize();
  EXPECT_EQ(Floats(huge), (FloatValues{0.0F, 0.0F, 0.0F}));
}

TEST(VRELVectorfTest, AngleIsFromZeroToPi) {
  VRELVectorf const x(2.0F, 0.0F, 0.0F);
  EXPECT_EQ(x.AngleTo(x), 0.0);
  EXPECT_EQ(x.AngleTo(VRELVectorf(5.0F, 0.0F, 0.0F)), 0.0);
  EXPECT_NEAR(x.AngleTo(VRELVectorf(0.0F, 3.0F, 0.0F)), VRELPIBY2, 1e-7);
  EXPECT_NEAR(x.AngleTo(VRELVectorf(0.0F, -3.0F, 0.0F)), VRELPIBY2, 1e-7);
  EXPECT_NEAR(x.AngleTo(VRELVectorf(1.0F, 1.0F, 0.0F)), VRELPIBY4, 1e-7);
  EXPECT_NEAR(x.AngleTo(VRELVectorf(-1.0F, 0.0F, 0.0F)), VRELPI, 1e-7);
}

TEST(VRELVectorfTest, AngleToZeroVectorIsZero) {
  VRELVectorf const x(2.0F, 0.0F, 0.0F);
  EXPECT_EQ(x.AngleTo(VRELNullVectorf), 0.0);
  EXPECT_EQ(VRELNullVectorf.AngleTo(x), 0.0);
  EXPECT_EQ(x.AngleTo(VRELNullVectorf, VRELVectorKf), 0.0);
  EXPECT_EQ(VRELNullVectorf.AngleTo(x, -VRELVectorKf), 0.0);
  EXPECT_EQ(x.AngleTo(VRELVectorf(0.0F, 1e-15F, 0.0F)), 0.0);
  // The limit itself is taken as 0, the next float is not.
  VRELVectorf const shortest(0.0F, std::nextafter(1e-14F, 1.0F), 0.0F);
  EXPECT_EQ(x.AngleTo(VRELVectorf(0.0F, 1e-14F, 0.0F)), 0.0);
  EXPECT_EQ(VRELVectorf(0.0F, 1e-14F, 0.0F).AngleTo(x), 0.0);
  EXPECT_EQ(VRELVectorf(0.0F, 1e-14F, 0.0F).AngleTo(x, VRELVectorKf), 0.0);
  EXPECT_NEAR(x.AngleTo(shortest), VRELPIBY2, 1e-7);
  EXPECT_NEAR(shortest.AngleTo(x, VRELVectorKf), VREL3PIBY2, 1e-6);
  EXPECT_NEAR(x.AngleTo(VRELVectorf(0.0F, 1e-13F, 0.0F)), VRELPIBY2, 1e-7);
}

TEST(VRELVectorfTest, AngleAboutReferenceIsUpToTwoPi) {
  VRELVectorf const up(0.0F, 0.0F, 2.0F);
  for (int degrees = 5; degrees < 360; degrees += 10) {
    SCOPED_TRACE(degrees);
    double const angle = degrees * VRELPI / 180.0;
    VRELVectorf const other(static_cast<float>(3.0 * std::cos(angle)), static_cast<float>(3.0 * std::sin(angle)), 0.0F);
    EXPECT_NEAR(VRELVectorIf.AngleTo(other, up), angle, 1e-6);
    EXPECT_NEAR(VRELVectorIf.AngleTo(other, -up), VREL2PI - angle, 1e-6);
  }
  EXPECT_EQ(VRELVectorIf.AngleTo(VRELVectorIf, up), 0.0);
}

}  // namespace
