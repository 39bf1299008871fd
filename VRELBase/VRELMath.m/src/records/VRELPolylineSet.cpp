#include "VRELPolylineSet.h"

VRELPolylineSet::VRELPolylineSet(int key) noexcept
    : creatorKey(key),
      pointCount(0),
      pointArray(nullptr),
      polylineCount(0),
      polylineArray(nullptr),
      owned(false),
      colorCount(0),
      colorArray(nullptr) {}

VRELPolylineSet::~VRELPolylineSet() {
  if (owned) delete[] pointArray;
}

VRINResult VRELPolylineSet::SetData(int newPointCount, float const* points, int newPolylineCount, int const* polylines,
                                    int newColorCount, float const* colors) {
  pointCount = newPointCount;
  pointArray = const_cast<float*>(points);
  polylineCount = newPolylineCount;
  polylineArray = const_cast<int*>(polylines);
  owned = false;
  colorCount = newColorCount;
  colorArray = const_cast<float*>(colors);
  return VREL_S_OK;
}

VRINResult VRELPolylineSet::GetPoints(int& count, float*& points) const {
  count = pointCount;
  points = pointArray;
  return VREL_S_OK;
}

VRINResult VRELPolylineSet::GetPolylines(int& count, int*& polylines) const {
  count = polylineCount;
  polylines = polylineArray;
  return VREL_S_OK;
}

VRINResult VRELPolylineSet::GetColors(int& count, float*& colors) const {
  count = colorCount;
  colors = colorArray;
  return VREL_S_OK;
}

int VRELPolylineSet::GetKey() const {
  return creatorKey;
}
