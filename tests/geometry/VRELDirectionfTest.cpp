#include "VRELDirectionf.h"

#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

#include "Coordinates.h"

namespace {

using FloatValues = std::vector<float>;

TEST(VRELDirectionfTest, IsThreeFloats) {
  static_assert(sizeof(VRELDirectionf) == 12);
  static_assert(!std::is_polymorphic_v<VRELDirectionf>);
  static_assert(std::is_trivially_copyable_v<VRELDirectionf>);
}

TEST(VRELDirectionfTest, ConstructorsNormalize) {
  FloatValues const expected{0.0F, 0.6F, 0.8F};
  float const in[] = {0.0F, 3.0F, 4.0F};
  VRELDirectionf const directions[] = {
      VRELDirectionf(0.0F, 3.0F, 4.0F),
      VRELDirectionf(in),
      VRELDirectionf(VRELVectorf(0.0F, 3.0F, 4.0F)),
      VRELDirectionf(VRELPointf(1.0F, 1.0F, 1.0F), VRELPointf(1.0F, 4.0F, 5.0F)),
  };
  for (VRELDirectionf const& direction : directions) {
    EXPECT_EQ(direction.X(), 0.0F);
    EXPECT_FLOAT_EQ(direction.Y(), expected[1]);
    EXPECT_FLOAT_EQ(direction.Z(), expected[2]);
  }
}

TEST(VRELDirectionfTest, ZeroLengthBecomesXAxis) {
  FloatValues const xAxis{1.0F, 0.0F, 0.0F};
  EXPECT_EQ(Floats(VRELDirectionf()), xAxis);
  EXPECT_EQ(Floats(VRELDirectionf(0.0F, 0.0F, 0.0F)), xAxis);
  EXPECT_EQ(Floats(VRELDirectionf(0.0F, 1e-8F, 0.0F)), xAxis);
  EXPECT_EQ(Floats(VRELDirectionf(static_cast<float const*>(nullptr))), xAxis);
  EXPECT_EQ(Floats(VRELDirectionf(VRELPointOf, VRELPointOf)), xAxis);
}

TEST(VRELDirectionfTest, CopyIsNotNormalized) {
  // Bits that are not a unit vector.
  VRELDirectionf direction;
  float const bits[] = {3.0F, 0.0F, 0.0F};
  std::memcpy(static_cast<void*>(&direction), bits, sizeof bits);
  VRELDirectionf const copy(direction);
  EXPECT_EQ(copy.X(), 3.0F);
  EXPECT_EQ((-copy).X(), -3.0F);
  direction.Normalize();
  EXPECT_EQ(direction.X(), 1.0F);
}

TEST(VRELDirectionfTest, Arithmetic) {
  VRELDirectionf const y(0.0F, 1.0F, 0.0F);
  VRELDirectionf const z(0.0F, 0.0F, 1.0F);
  EXPECT_EQ(Floats(-y), (FloatValues{0.0F, -1.0F, 0.0F}));
  static_assert(std::is_same_v<decltype(-y), VRELDirectionf>);
  static_assert(std::is_same_v<decltype(y * 2.0F), VRELVectorf>);
  EXPECT_EQ(Floats(y * 2.0F), (FloatValues{0.0F, 2.0F, 0.0F}));
  EXPECT_EQ(Floats(2.0F * y), (FloatValues{0.0F, 2.0F, 0.0F}));
  EXPECT_EQ(Floats(y ^ z), (FloatValues{1.0F, 0.0F, 0.0F}));
  EXPECT_EQ(Floats(y ^ VRELVectorf(0.0F, 0.0F, 5.0F)), (FloatValues{5.0F, 0.0F, 0.0F}));
  EXPECT_EQ(Floats(VRELVectorf(0.0F, 0.0F, 5.0F) ^ y), (FloatValues{-5.0F, 0.0F, 0.0F}));
}

}  // namespace
