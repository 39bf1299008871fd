#include "VRELSurfacicShell.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <type_traits>
#include <vector>

#include "VRELStrippedShell.h"
#include "VirtualSlot.h"

namespace {

// All values that a shell returns.
struct Data {
  int pointCount = -7;
  float* points = nullptr;
  int normalCount = -7;
  float* normals = nullptr;
  int faceCount = -7;
  int* faces = nullptr;
  int colorCount = -7;
  float* colors = nullptr;

  bool operator==(Data const& other) const {
    return pointCount == other.pointCount && points == other.points && normalCount == other.normalCount &&
           normals == other.normals && faceCount == other.faceCount && faces == other.faces &&
           colorCount == other.colorCount && colors == other.colors;
  }
};

Data DataOf(VRELSurfacicShell const& shell) {
  Data data;
  EXPECT_EQ(shell.GetPoints(data.pointCount, data.points), VREL_S_OK);
  EXPECT_EQ(shell.GetNormals(data.normalCount, data.normals), VREL_S_OK);
  EXPECT_EQ(shell.GetFaces(data.faceCount, data.faces), VREL_S_OK);
  EXPECT_EQ(shell.GetColors(data.colorCount, data.colors), VREL_S_OK);
  return data;
}

// Arrays that a shell is set from.
struct Sources {
  std::vector<float> points = {0, 0, 0, 1, 0, 0, 0, 1, 0};
  std::vector<float> normals = {0, 0, 1, 0, 0, -1};
  std::vector<int> faces = {3, 0, 1, 2};
  std::vector<float> colors = {0.5F, 0.25F, 1};

  VRINResult CopyInto(VRELSurfacicShell& shell) const {
    return shell.CopyData(3, points.data(), 2, normals.data(), 4, faces.data(), 1, colors.data());
  }
  VRINResult SetInto(VRELSurfacicShell& shell) const {
    return shell.SetData(3, points.data(), 2, normals.data(), 4, faces.data(), 1, colors.data());
  }
};

void ExpectContent(Data const& data, Sources const& sources) {
  EXPECT_EQ(std::vector<float>(data.points, data.points + sources.points.size()), sources.points);
  EXPECT_EQ(std::vector<float>(data.normals, data.normals + sources.normals.size()), sources.normals);
  EXPECT_EQ(std::vector<int>(data.faces, data.faces + sources.faces.size()), sources.faces);
  EXPECT_EQ(std::vector<float>(data.colors, data.colors + sources.colors.size()), sources.colors);
}

// Frees arrays that a shell no longer owns.
void Release(Data const& data) {
  delete[] data.points;
  delete[] data.normals;
  delete[] data.faces;
  delete[] data.colors;
}

TEST(VRELSurfacicShellTest, VirtualSlots) {
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELSurfacicShell>);
  EXPECT_EQ(SlotOf(&VRELSurfacicShell::SetData), 2U);
  EXPECT_EQ(SlotOf(&VRELSurfacicShell::CopyData), 3U);
  EXPECT_EQ(SlotOf(&VRELSurfacicShell::GetPoints), 4U);
  EXPECT_EQ(SlotOf(&VRELSurfacicShell::GetFaces), 5U);
  EXPECT_EQ(SlotOf(&VRELSurfacicShell::GetNormals), 6U);
  EXPECT_EQ(SlotOf(&VRELSurfacicShell::GetColors), 7U);
  EXPECT_EQ(SlotOf(&VRELSurfacicShell::GetKey), 8U);
  EXPECT_EQ(SlotOf(&VRELSurfacicShell::GetLOD), 9U);
  EXPECT_EQ(SlotOf(&VRELSurfacicShell::GetPass), 10U);
  EXPECT_EQ(SlotOf(&VRELSurfacicShell::IsStripped), 11U);
  // The virtual table, three ints, four counts with their arrays, and the flag next to a count.
  EXPECT_EQ(sizeof(VRELSurfacicShell), 80U);
}

TEST(VRELSurfacicShellTest, DefaultHasKeyLevelAndPass) {
  VRELSurfacicShell const shell(11, 22, 33);
  EXPECT_EQ(shell.GetKey(), 11);
  EXPECT_EQ(shell.GetLOD(), 22);
  EXPECT_EQ(shell.GetPass(), 33);
  EXPECT_FALSE(shell.IsStripped());
  EXPECT_EQ(DataOf(shell), (Data{0, nullptr, 0, nullptr, 0, nullptr, 0, nullptr}));
}

TEST(VRELSurfacicShellTest, SetDataDoesNotTransferOwnership) {
  Sources sources;
  VRELSurfacicShell shell(1, 2, 3);
  EXPECT_EQ(sources.SetInto(shell), VREL_S_OK);
  EXPECT_EQ(DataOf(shell), (Data{3, sources.points.data(), 2, sources.normals.data(), 4, sources.faces.data(), 1,
                                 sources.colors.data()}));
}

TEST(VRELSurfacicShellTest, SetDataDoesNotCheck) {
  VRELSurfacicShell shell(1, 2, 3);
  constexpr int largest = std::numeric_limits<int>::max();
  EXPECT_EQ(shell.SetData(-1, nullptr, largest, nullptr, 5, nullptr, -9, nullptr), VREL_S_OK);
  EXPECT_EQ(DataOf(shell), (Data{-1, nullptr, largest, nullptr, 5, nullptr, -9, nullptr}));
}

TEST(VRELSurfacicShellTest, CopyDataIsDeep) {
  VRELSurfacicShell shell(1, 2, 3);
  {
    Sources sources;
    EXPECT_EQ(sources.CopyInto(shell), VREL_S_OK);
    sources.points.assign(9, 77);
    sources.normals.assign(6, 77);
    sources.faces.assign(4, 77);
    sources.colors.assign(3, 77);
  }
  Data const data = DataOf(shell);
  EXPECT_EQ(data.pointCount, 3);
  EXPECT_EQ(data.normalCount, 2);
  EXPECT_EQ(data.faceCount, 4);
  EXPECT_EQ(data.colorCount, 1);
  ExpectContent(data, Sources());
}

TEST(VRELSurfacicShellTest, CopyDataKeepsEveryBit) {
  VRELSurfacicShell shell(1, 2, 3);
  float const points[] = {-0.0F, std::numeric_limits<float>::denorm_min(), std::numeric_limits<float>::infinity()};
  EXPECT_EQ(shell.CopyData(1, points, 0, nullptr, 0, nullptr, 0, nullptr), VREL_S_OK);
  Data const data = DataOf(shell);
  EXPECT_NE(data.points, points);
  EXPECT_TRUE(std::equal(points, points + 3, data.points));
  EXPECT_TRUE(std::signbit(data.points[0]));
}

TEST(VRELSurfacicShellTest, CopyDataOfZeroCounts) {
  VRELSurfacicShell shell(1, 2, 3);
  float const unused = 5;
  EXPECT_EQ(shell.CopyData(0, nullptr, 0, &unused, 0, nullptr, 0, nullptr), VREL_S_OK);
  Data const data = DataOf(shell);
  EXPECT_EQ(data.pointCount, 0);
  EXPECT_NE(data.points, nullptr);
  EXPECT_NE(data.normals, nullptr);
  EXPECT_NE(data.normals, &unused);
  EXPECT_NE(data.faces, nullptr);
  EXPECT_NE(data.colors, nullptr);
}

TEST(VRELSurfacicShellTest, CopyDataFailsWithoutChange) {
  float const floats[] = {1, 2, 3};
  int const ints[] = {1};
  VRELSurfacicShell shell(1, 2, 3);
  EXPECT_EQ(shell.CopyData(1, floats, 1, floats, 1, ints, 1, floats), VREL_S_OK);
  Data const before = DataOf(shell);
  EXPECT_EQ(shell.CopyData(1, nullptr, 0, nullptr, 0, nullptr, 0, nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(shell.CopyData(0, nullptr, 1, nullptr, 0, nullptr, 0, nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(shell.CopyData(0, nullptr, 0, nullptr, 1, nullptr, 0, nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(shell.CopyData(0, nullptr, 0, nullptr, 0, nullptr, 1, nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(shell.CopyData(-1, floats, 1, floats, 1, ints, 1, floats), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(shell.CopyData(1, floats, -1, floats, 1, ints, 1, floats), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(shell.CopyData(1, floats, 1, floats, std::numeric_limits<int>::min(), ints, 1, floats),
            VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(shell.CopyData(1, floats, 1, floats, 1, ints, -1, nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(DataOf(shell), before);
}

TEST(VRELSurfacicShellTest, SecondCopyDataKeepsFirstArrays) {
  auto shell = std::make_unique<VRELSurfacicShell>(1, 2, 3);
  Sources().CopyInto(*shell);
  Data const first = DataOf(*shell);
  Sources other;
  other.points.assign(9, 5);
  other.CopyInto(*shell);
  EXPECT_NE(DataOf(*shell).points, first.points);
  ExpectContent(DataOf(*shell), other);
  shell.reset();
  ExpectContent(first, Sources());
  Release(first);
}

TEST(VRELSurfacicShellTest, SetDataKeepsArraysOfCopyData) {
  Sources const sources;
  Data copied;
  {
    VRELSurfacicShell shell(1, 2, 3);
    sources.CopyInto(shell);
    copied = DataOf(shell);
    sources.SetInto(shell);
    // The shell owns nothing now: its destructor frees neither the copies nor the arrays of the caller.
  }
  ExpectContent(copied, Sources());
  Release(copied);
  ExpectContent(Data{3, const_cast<float*>(sources.points.data()), 2, const_cast<float*>(sources.normals.data()), 4,
                     const_cast<int*>(sources.faces.data()), 1, const_cast<float*>(sources.colors.data())},
                sources);
}

TEST(VRELSurfacicShellTest, CopyDataKeepsArraysOfCaller) {
  Sources const sources;
  {
    VRELSurfacicShell shell(1, 2, 3);
    sources.SetInto(shell);
    sources.CopyInto(shell);
    EXPECT_NE(DataOf(shell).points, sources.points.data());
  }
  EXPECT_EQ(sources.points, Sources().points);
}

TEST(VRELSurfacicShellTest, CopyDataOfOwnArrays) {
  VRELSurfacicShell shell(1, 2, 3);
  Sources().CopyInto(shell);
  Data const own = DataOf(shell);
  EXPECT_EQ(shell.CopyData(3, own.points, 2, own.normals, 4, own.faces, 1, own.colors), VREL_S_OK);
  ExpectContent(DataOf(shell), Sources());
  Release(own);
}

}  // namespace
