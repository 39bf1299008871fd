#include "VRELCamera.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "VirtualSlot.h"

namespace {

using Triple = std::array<float, 3>;

Triple Get(VRELCamera const& camera, VRINResult (VRELCamera::*get)(float*) const) {
  Triple triple = {};
  EXPECT_EQ((camera.*get)(triple.data()), VREL_S_OK);
  return triple;
}

std::array<std::uint32_t, 3> BitsOf(Triple const& triple) {
  std::array<std::uint32_t, 3> bits = {};
  std::memcpy(bits.data(), triple.data(), sizeof bits);
  return bits;
}

constexpr auto type7 = static_cast<VRELCameraType>(7);
Triple const somePosition = {1, 2, 3};
Triple const someTarget = {4, 6, 15};
Triple const someZenith = {0, 5, 0};

TEST(VRELCameraTest, HasFieldsAndNoVirtualDestructor) {
  EXPECT_TRUE(std::is_polymorphic_v<VRELCamera>);
  EXPECT_FALSE(std::has_virtual_destructor_v<VRELCamera>);
  // The virtual table, the type, and fourteen floats.
  EXPECT_EQ(sizeof(VRELCamera), 72U);
  EXPECT_TRUE((std::is_same_v<std::underlying_type_t<VRELCameraType>, int>));
  EXPECT_TRUE((std::is_convertible_v<VRELCameraType, int>));
}

TEST(VRELCameraTest, VirtualSlots) {
  EXPECT_EQ(SlotOf(&VRELCamera::GetType), 0U);
  EXPECT_EQ(SlotOf(&VRELCamera::GetPosition), 1U);
  EXPECT_EQ(SlotOf(&VRELCamera::GetTarget), 2U);
  EXPECT_EQ(SlotOf(&VRELCamera::GetDirection), 3U);
  EXPECT_EQ(SlotOf(&VRELCamera::GetZenith), 4U);
  EXPECT_EQ(SlotOf(&VRELCamera::GetAngle), 5U);
  EXPECT_EQ(SlotOf(&VRELCamera::GetZoom), 6U);
}

TEST(VRELCameraTest, DefaultValues) {
  VRELCamera const camera;
  EXPECT_EQ(camera.GetType(), 2);
  EXPECT_EQ(Get(camera, &VRELCamera::GetPosition), (Triple{1, 1, 1}));
  EXPECT_EQ(Get(camera, &VRELCamera::GetTarget), (Triple{0, 0, 0}));
  EXPECT_EQ(Get(camera, &VRELCamera::GetZenith), (Triple{0, 0, 1}));
  EXPECT_EQ(camera.GetAngle(0), 45.0F);
  EXPECT_EQ(camera.GetZoom(0), 1.0F);
}

TEST(VRELCameraTest, DefaultDirectionIsNotNormalized) {
  EXPECT_EQ(Get(VRELCamera(), &VRELCamera::GetDirection), (Triple{-1, -1, -1}));
}

TEST(VRELCameraTest, ConstructorNormalizesDirection) {
  Triple position = somePosition;
  Triple target = someTarget;
  Triple zenith = someZenith;
  VRELCamera const camera(type7, position.data(), target.data(), zenith.data(), 30.5F, 2.5F);
  position = target = zenith = {9, 9, 9};
  EXPECT_EQ(camera.GetType(), type7);
  EXPECT_EQ(Get(camera, &VRELCamera::GetPosition), somePosition);
  EXPECT_EQ(Get(camera, &VRELCamera::GetTarget), someTarget);
  EXPECT_EQ(Get(camera, &VRELCamera::GetZenith), someZenith);
  // (3, 4, 12) has the length 13.
  EXPECT_EQ(Get(camera, &VRELCamera::GetDirection),
            (Triple{static_cast<float>(3.0 / 13), static_cast<float>(4.0 / 13), static_cast<float>(12.0 / 13)}));
  EXPECT_EQ(camera.GetAngle(0), 30.5F);
  EXPECT_EQ(camera.GetZoom(0), 2.5F);
}

TEST(VRELCameraTest, DirectionIsComputedInDoubles) {
  // In floats each of the three would differ in the last place.
  Triple const position = {-55.6F, 98.5F, -13.5F};
  Triple const target = {48.7F, -94.0F, 8.1F};
  VRELCamera const camera(type7, position.data(), target.data(), someZenith.data(), 0, 0);
  EXPECT_EQ(BitsOf(Get(camera, &VRELCamera::GetDirection)),
            (std::array<std::uint32_t, 3>{0x3EF2BB35, 0xBF5FFF3B, 0x3DC912DC}));
  // In floats these squares would be infinite.
  Triple const far = {3e30F, 4e30F, 0};
  Triple const origin = {0, 0, 0};
  VRELCamera const distant(type7, origin.data(), far.data(), someZenith.data(), 0, 0);
  Triple const direction = Get(distant, &VRELCamera::GetDirection);
  EXPECT_FLOAT_EQ(direction[0], 0.6F);
  EXPECT_FLOAT_EQ(direction[1], 0.8F);
}

TEST(VRELCameraTest, DirectionToPositionIsNaN) {
  VRELCamera const camera(type7, somePosition.data(), somePosition.data(), someZenith.data(), 1, 1);
  for (float each : Get(camera, &VRELCamera::GetDirection)) EXPECT_TRUE(std::isnan(each));
}

TEST(VRELCameraTest, NaNIsKept) {
  constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
  constexpr float infinity = std::numeric_limits<float>::infinity();
  Triple const position = {notANumber, infinity, std::numeric_limits<float>::denorm_min()};
  VRELCamera const camera(type7, position.data(), someTarget.data(), someZenith.data(), notANumber, -infinity);
  Triple const stored = Get(camera, &VRELCamera::GetPosition);
  EXPECT_TRUE(std::isnan(stored[0]));
  EXPECT_EQ(stored[1], infinity);
  EXPECT_EQ(stored[2], position[2]);
  for (float each : Get(camera, &VRELCamera::GetDirection)) EXPECT_TRUE(std::isnan(each));
  EXPECT_TRUE(std::isnan(camera.GetAngle(1)));
  EXPECT_EQ(camera.GetZoom(1), -infinity);
}

TEST(VRELCameraTest, NullArrayIsDefault) {
  VRELCamera const camera(type7, nullptr, nullptr, nullptr, 10, 3);
  EXPECT_EQ(Get(camera, &VRELCamera::GetPosition), (Triple{1, 1, 1}));
  EXPECT_EQ(Get(camera, &VRELCamera::GetTarget), (Triple{0, 0, 0}));
  EXPECT_EQ(Get(camera, &VRELCamera::GetZenith), (Triple{0, 0, 1}));
  // The direction is computed as for other cameras: here it is a unit vector.
  for (float each : Get(camera, &VRELCamera::GetDirection)) EXPECT_FLOAT_EQ(each, -0.57735026F);
}

TEST(VRELCameraTest, GettersFailForNull) {
  VRELCamera const camera;
  EXPECT_EQ(camera.GetPosition(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(camera.GetTarget(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(camera.GetDirection(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(camera.GetZenith(nullptr), VREL_E_INVALID_ARGUMENT);
}

TEST(VRELCameraTest, AngleAndZoomKeepArgument) {
  VRELCamera const camera(type7, somePosition.data(), someTarget.data(), someZenith.data(), 60, 4);
  float angle = -1;
  float zoom = -2;
  EXPECT_EQ(camera.GetAngle(angle), 60.0F);
  EXPECT_EQ(camera.GetZoom(zoom), 4.0F);
  EXPECT_EQ(angle, -1.0F);
  EXPECT_EQ(zoom, -2.0F);
}

TEST(VRELCameraTest, CopyEqualsSource) {
  VRELCamera const source(type7, somePosition.data(), someTarget.data(), someZenith.data(), 60, 4);
  VRELCamera copy(source);
  EXPECT_EQ(Get(copy, &VRELCamera::GetDirection), Get(source, &VRELCamera::GetDirection));
  copy = VRELCamera();
  EXPECT_EQ(copy.GetType(), VRELCameraTypeDefault);
  EXPECT_EQ(Get(copy, &VRELCamera::GetPosition), (Triple{1, 1, 1}));
}

}  // namespace
