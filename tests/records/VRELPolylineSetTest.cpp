#include "VRELPolylineSet.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

#include "VirtualSlot.h"

namespace {

// All values that a set returns.
struct Data {
  int pointCount = -7;
  float* points = nullptr;
  int polylineCount = -7;
  int* polylines = nullptr;
  int colorCount = -7;
  float* colors = nullptr;
};

Data DataOf(VRELPolylineSet const& set) {
  Data data;
  EXPECT_EQ(set.GetPoints(data.pointCount, data.points), VREL_S_OK);
  EXPECT_EQ(set.GetPolylines(data.polylineCount, data.polylines), VREL_S_OK);
  EXPECT_EQ(set.GetColors(data.colorCount, data.colors), VREL_S_OK);
  return data;
}

float const points[] = {0, 0, 0, 1, 0, 0};
int const polylines[] = {2, 0, 1};
float const colors[] = {1, 0, 0};

TEST(VRELPolylineSetTest, VirtualSlots) {
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELPolylineSet>);
  EXPECT_EQ(SlotOf(&VRELPolylineSet::SetData), 2U);
  EXPECT_EQ(SlotOf(&VRELPolylineSet::GetPoints), 3U);
  EXPECT_EQ(SlotOf(&VRELPolylineSet::GetPolylines), 4U);
  EXPECT_EQ(SlotOf(&VRELPolylineSet::GetColors), 5U);
  EXPECT_EQ(SlotOf(&VRELPolylineSet::GetKey), 6U);
  // The virtual table, three counts with their arrays, the key next to the first and the flag next to the last count.
  EXPECT_EQ(sizeof(VRELPolylineSet), 56U);
}

TEST(VRELPolylineSetTest, DefaultHasKeyOnly) {
  VRELPolylineSet const set(-42);
  EXPECT_EQ(set.GetKey(), -42);
  float untouched = 0;
  int count = 5;
  float* array = &untouched;
  EXPECT_EQ(set.GetPoints(count, array), VREL_S_OK);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(array, nullptr);
  Data const data = DataOf(set);
  EXPECT_EQ(data.polylineCount, 0);
  EXPECT_EQ(data.polylines, nullptr);
  EXPECT_EQ(data.colorCount, 0);
  EXPECT_EQ(data.colors, nullptr);
}

TEST(VRELPolylineSetTest, SetDataDoesNotTransferOwnership) {
  // The arrays are not on the heap, so that freeing them would crash.
  VRELPolylineSet set(1);
  EXPECT_EQ(set.SetData(2, points, 1, polylines, 3, colors), VREL_S_OK);
  Data const data = DataOf(set);
  EXPECT_EQ(data.pointCount, 2);
  EXPECT_EQ(data.points, points);
  EXPECT_EQ(data.polylineCount, 1);
  EXPECT_EQ(data.polylines, polylines);
  EXPECT_EQ(data.colorCount, 3);
  EXPECT_EQ(data.colors, colors);
  EXPECT_EQ(set.GetKey(), 1);
}

TEST(VRELPolylineSetTest, SetDataReplacesEverything) {
  VRELPolylineSet set(1);
  set.SetData(2, points, 1, polylines, 3, colors);
  EXPECT_EQ(set.SetData(0, nullptr, 0, nullptr, 0, nullptr), VREL_S_OK);
  Data const data = DataOf(set);
  EXPECT_EQ(data.pointCount, 0);
  EXPECT_EQ(data.points, nullptr);
  EXPECT_EQ(data.polylineCount, 0);
  EXPECT_EQ(data.polylines, nullptr);
  EXPECT_EQ(data.colorCount, 0);
  EXPECT_EQ(data.colors, nullptr);
}

TEST(VRELPolylineSetTest, CopySharesArrays) {
  VRELPolylineSet source(1);
  source.SetData(2, points, 1, polylines, 3, colors);
  VRELPolylineSet const copy(source);
  source = VRELPolylineSet(7);
  EXPECT_EQ(copy.GetKey(), 1);
  EXPECT_EQ(DataOf(copy).pointCount, 2);
  EXPECT_EQ(DataOf(copy).points, points);
  EXPECT_EQ(source.GetKey(), 7);
  EXPECT_EQ(DataOf(source).points, nullptr);
}

TEST(VRELPolylineSetTest, SetDataDoesNotCheck) {
  VRELPolylineSet set(1);
  constexpr int largest = std::numeric_limits<int>::max();
  EXPECT_EQ(set.SetData(-1, points, largest, nullptr, std::numeric_limits<int>::min(), nullptr), VREL_S_OK);
  Data const data = DataOf(set);
  EXPECT_EQ(data.pointCount, -1);
  EXPECT_EQ(data.points, points);
  EXPECT_EQ(data.polylineCount, largest);
  EXPECT_EQ(data.polylines, nullptr);
  EXPECT_EQ(data.colorCount, std::numeric_limits<int>::min());
  EXPECT_EQ(data.colors, nullptr);
}

}  // namespace
