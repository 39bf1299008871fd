// Declarations and field offsets of the records, as clients compiled against.
#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

#include "Declaration.h"
#include "VRELAssemblyComponentTransform.h"
#include "VRELCamera.h"
#include "VRELLayerFilterC.h"
#include "VRELPolylineSet.h"
#include "VRELRGBColor.h"
#include "VRELSelectionSet.h"
#include "VRELString.h"
#include "VRELStrippedShell.h"
#include "VirtualSlot.h"

namespace {

using Placement = VRELAssemblyComponentTransform;
static_assert(std::is_constructible_v<Placement, double const*, double const&>);
static_assert(std::is_same_v<decltype(&Placement::Get), VRINResult (Placement::*)(double*) const>);
static_assert(std::is_invocable_r_v<VRINResult, decltype(&Placement::Set), Placement&, double*>);
static_assert(std::is_invocable_r_v<VRINResult, decltype(&Placement::GetRotation), Placement&, double*>);
static_assert(std::is_invocable_r_v<VRINResult, decltype(&Placement::SetRotation), Placement&, double*>);
static_assert(std::is_invocable_r_v<VRINResult, decltype(&Placement::GetTranslation), Placement&, double*>);
static_assert(std::is_invocable_r_v<VRINResult, decltype(&Placement::SetTranslation), Placement&, double*>);
static_assert(IsDeclared<VRINResult (Placement::*)(double&) const>(&Placement::GetScale));
static_assert(IsDeclared<VRINResult (Placement::*)(double)>(&Placement::SetScale));
static_assert(IsDeclared<VRINResult (Placement::*)(float*) const>(&Placement::Get4x4ByColumn));
static_assert(IsDeclared<VRINResult (Placement::*)(float*) const>(&Placement::Get4x4ByRow));
static_assert(std::is_invocable_r_v<VRINResult, decltype(&Placement::Set4x4ByColumn), Placement&, float*>);
static_assert(std::is_invocable_r_v<VRINResult, decltype(&Placement::Set3x4ByRow), Placement&, float*>);
static_assert(std::is_invocable_r_v<VRINResult, decltype(&Placement::GetDeterminant), Placement&, double&>);
static_assert(std::is_invocable_r_v<bool, decltype(&Placement::IsValid), Placement&>);
static_assert(std::is_invocable_r_v<bool, decltype(&Placement::IsMirrorTransform), Placement&>);
static_assert(IsDeclared<bool (Placement::*)() const>(&Placement::IsIdentityTransform));
static_assert(IsDeclared<VRINResult (Placement::*)(float*) const>(&Placement::ApplyRotation));
static_assert(IsDeclared<VRINResult (Placement::*)(float*) const>(&Placement::ApplyTransform));
static_assert(IsDeclared<Placement (Placement::*)(Placement const&) const>(&Placement::operator*));

using Set = VRELSelectionSet;
static_assert(std::is_constructible_v<Set, VRELString const&, bool>);
static_assert(!std::is_constructible_v<Set, VRELString const&, wchar_t const*>);
static_assert(IsDeclared<VRELString (Set::*)() const>(&Set::GetName));
static_assert(IsDeclared<bool (Set::*)() const>(&Set::IsCurrent));
static_assert(IsDeclared<VRINResult (Set::*)(void*)>(&Set::AddMember));
static_assert(std::is_invocable_r_v<bool, decltype(&Set::IsMember), Set&, void*>);
static_assert(std::is_invocable_r_v<int, decltype(&Set::SelectionSetLength), Set&>);
static_assert(std::is_invocable_r_v<bool, decltype(&Set::GetMemberAtIndex), Set&, int, void*&>);

using Filter = VRELLayerFilterC;
static_assert(!std::is_polymorphic_v<Filter>);
static_assert(std::is_constructible_v<Filter, int, int*, VRELString const&, bool, eLayerFilterType>);
static_assert(std::is_invocable_r_v<VRINResult, decltype(&Filter::Set), Filter&, int, int*, VRELString const&, bool,
                                    eLayerFilterType>);
static_assert(IsDeclared<VRINResult (Filter::*)(VRELString const&)>(&Filter::SetName));
static_assert(IsDeclared<VRINResult (Filter::*)(VRELString&) const>(&Filter::GetName));
static_assert(IsDeclared<VRINResult (Filter::*)(int&) const>(&Filter::GetNumLayers));
static_assert(IsDeclared<VRINResult (Filter::*)(int, int&) const>(&Filter::GetLayerAt));
static_assert(IsDeclared<VRINResult (Filter::*)(bool)>(&Filter::SetCurrent));
static_assert(IsDeclared<VRINResult (Filter::*)(bool&) const>(&Filter::IsCurrent));
static_assert(IsDeclared<VRINResult (Filter::*)(eLayerFilterType)>(&Filter::SetLayerFilterType));
static_assert(IsDeclared<VRINResult (Filter::*)(eLayerFilterType&) const>(&Filter::GetLayerFilterType));
static_assert(IsDeclared<VRINResult (Filter::*)(bool&) const>(&Filter::IsALLLayerFilter));

using Camera = VRELCamera;
static_assert(std::is_constructible_v<Camera, VRELCameraType, float*, float*, float*, float, float>);
static_assert(std::is_same_v<decltype(&Camera::GetType), VRELCameraType (Camera::*)() const>);
static_assert(std::is_same_v<decltype(&Camera::GetPosition), VRINResult (Camera::*)(float*) const>);
static_assert(std::is_same_v<decltype(&Camera::GetAngle), float (Camera::*)(float) const>);
static_assert(std::is_same_v<decltype(&Camera::GetZoom), float (Camera::*)(float) const>);

using Color = VRELRGBColor;
static_assert(std::is_constructible_v<Color, float, float, float, float>);
static_assert(std::is_constructible_v<Color, unsigned int, unsigned int, unsigned int, unsigned int>);
static_assert(IsDeclared<unsigned int (Color::*)() const>(&Color::hashCode));
static_assert(IsDeclared<void (Color::*)()>(&Color::SetValidity));
static_assert(IsDeclared<bool (Color::*)(Color const&) const>(&Color::operator==));
static_assert(IsDeclared<bool (Color::*)(Color const&) const>(&Color::operator!=));

using Shell = VRELSurfacicShell;
static_assert(std::is_same_v<decltype(&Shell::SetData), VRINResult (Shell::*)(int, float const*, int, float const*, int,
                                                                              int const*, int, float const*)>);
static_assert(std::is_same_v<decltype(&Shell::SetData), decltype(&Shell::CopyData)>);
static_assert(std::is_same_v<decltype(&Shell::GetFaces), VRINResult (Shell::*)(int&, int*&) const>);
static_assert(std::is_same_v<decltype(&VRELPolylineSet::SetData),
                             VRINResult (VRELPolylineSet::*)(int, float const*, int, int const*, int, float const*)>);
static_assert(
    std::is_same_v<decltype(&VRELPolylineSet::GetPolylines), VRINResult (VRELPolylineSet::*)(int&, int*&) const>);
static_assert(std::is_base_of_v<VRELSurfacicShell, VRELStrippedShell>);

TEST(RecordsInterfaceTest, PlacementFields) {
  double const matrix[12] = {1, 2, 3, 4, 5, 6, 7, 8, 10, 11, 12, 13};
  Placement placement(matrix, 2.5);
  EXPECT_EQ(FieldAt<double>(placement, 8), 1.0);
  EXPECT_EQ(FieldAt<double>(placement, 8 + 11 * 8), 13.0);
  EXPECT_EQ(FieldAt<double>(placement, 112), 2.5);
  EXPECT_FALSE(FieldAt<bool>(placement, 120));
  double determinant = 0.0;
  placement.GetDeterminant(determinant);
  EXPECT_EQ(determinant, -3.0);
  EXPECT_EQ(FieldAt<double>(placement, 104), -3.0);
  EXPECT_TRUE(FieldAt<bool>(placement, 120));
  EXPECT_FALSE(FieldAt<bool>(placement, 121));
  EXPECT_TRUE(placement.IsMirrorTransform());
  EXPECT_TRUE(FieldAt<bool>(placement, 121));
  EXPECT_TRUE(FieldAt<bool>(placement, 122));
  EXPECT_FALSE(FieldAt<bool>(placement, 123));
  EXPECT_TRUE(FieldAt<bool>(placement, 124));
}

TEST(RecordsInterfaceTest, CameraFields) {
  VRELCamera const camera;
  EXPECT_EQ(FieldAt<std::int32_t>(camera, 8), 2);
  EXPECT_EQ(FieldAt<float>(camera, 12), 1.0F);
  EXPECT_EQ(FieldAt<float>(camera, 24), 0.0F);
  EXPECT_EQ(FieldAt<float>(camera, 36), -1.0F);
  EXPECT_EQ(FieldAt<float>(camera, 56), 1.0F);
  EXPECT_EQ(FieldAt<float>(camera, 60), 45.0F);
  EXPECT_EQ(FieldAt<float>(camera, 64), 1.0F);
}

TEST(RecordsInterfaceTest, CameraReturnsAngleAndZoomWithoutArgument) {
  VRELCamera const camera(VRELCameraTypeDefault, nullptr, nullptr, nullptr, 30.0F, 2.5F);
  EXPECT_EQ(camera.GetAngle(), 30.0F);
  EXPECT_EQ(camera.GetZoom(), 2.5F);
}

TEST(RecordsInterfaceTest, ColorFields) {
  VRELRGBColor const color(0.25F, 0.5F, 0.75F, 1.0F);
  EXPECT_EQ(FieldAt<float>(color, 8), 0.25F);
  EXPECT_EQ(FieldAt<float>(color, 20), 1.0F);
  EXPECT_TRUE(FieldAt<bool>(color, 24));
}

TEST(RecordsInterfaceTest, PolylineSetFields) {
  float points[3] = {};
  int polylines[1] = {};
  float colors[3] = {};
  VRELPolylineSet set(7);
  set.SetData(1, points, 2, polylines, 3, colors);
  EXPECT_EQ(FieldAt<std::int32_t>(set, 8), 7);
  EXPECT_EQ(FieldAt<std::int32_t>(set, 12), 1);
  EXPECT_EQ(FieldAt<float*>(set, 16), points);
  EXPECT_EQ(FieldAt<std::int32_t>(set, 24), 2);
  EXPECT_EQ(FieldAt<int*>(set, 32), polylines);
  EXPECT_FALSE(FieldAt<bool>(set, 40));
  EXPECT_EQ(FieldAt<std::int32_t>(set, 44), 3);
  EXPECT_EQ(FieldAt<float*>(set, 48), colors);
}

TEST(RecordsInterfaceTest, ShellFields) {
  float const floats[3] = {};
  int const faces[1] = {};
  VRELStrippedShell shell(7, 8, 9);
  shell.SetData(1, floats, 1, floats, 1, faces, 0, nullptr);
  EXPECT_EQ(FieldAt<std::int32_t>(shell, 8), 7);
  EXPECT_EQ(FieldAt<std::int32_t>(shell, 12), 8);
  EXPECT_EQ(FieldAt<std::int32_t>(shell, 16), 9);
  EXPECT_EQ(FieldAt<std::int32_t>(shell, 20), 1);
  EXPECT_EQ(FieldAt<float const*>(shell, 24), floats);
  EXPECT_EQ(FieldAt<std::int32_t>(shell, 32), 1);
  EXPECT_EQ(FieldAt<int const*>(shell, 40), faces);
  EXPECT_FALSE(FieldAt<bool>(shell, 48));
  EXPECT_EQ(FieldAt<std::int32_t>(shell, 52), 1);
  EXPECT_EQ(FieldAt<float const*>(shell, 56), floats);
  EXPECT_EQ(FieldAt<float const*>(shell, 72), nullptr);
}

TEST(RecordsInterfaceTest, LayerFilterFields) {
  int const layers[] = {3, 7};
  VRELLayerFilterC const filter(2, layers, VRELString(), true, eLayerFilterAll);
  EXPECT_EQ(FieldAt<void*>(filter, 0), nullptr);
  EXPECT_TRUE(FieldAt<bool>(filter, 8));
  EXPECT_EQ(FieldAt<std::int32_t>(filter, 12), 0);
  EXPECT_EQ(sizeof(VRELLayerFilterC), 24U);
}

TEST(RecordsInterfaceTest, SelectionSetHasVirtualDestructorOnly) {
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELSelectionSet>);
  VRELSelectionSet const set(VRELString(), true);
  EXPECT_TRUE(FieldAt<bool>(set, 8 + sizeof(VRELString)));
}

}  // namespace
