// Set of polylines for display.
#pragma once

#include "VRELExport.h"
#include "VRINResult.h"

// Set of polylines for display: arrays of points, polylines and colours, with a key chosen by the creator. The layout
// of the arrays is agreed between the module that writes them and the one that reads them; this class does not inspect
// them.
//
//   VRELPolylineSet set(1);
//   set.SetData(pointCount, points, polylineCount, polylines, 0, nullptr);
//   int count = 0;
//   float* shared = nullptr;
//   set.GetPoints(count, shared);  // shared == points
//
// Ownership: the arrays belong to the caller, who keeps them until the set and its copies are destroyed.
class VREL_EXPORT VRELPolylineSet {
 public:
  // Creates a set with counts of 0 and null arrays.
  explicit VRELPolylineSet(int key) noexcept;
  // Copies the key and refers to the same arrays.
  VRELPolylineSet(VRELPolylineSet const&) noexcept = default;
  VRELPolylineSet& operator=(VRELPolylineSet const&) noexcept = default;
  // Compatibility: frees no array, because SetData, the only way to set them, does not take ownership.
  virtual ~VRELPolylineSet();

  // Stores counts and pointers without copying or checking them. Returns VREL_S_OK.
  virtual VRINResult SetData(int pointCount, float const* points, int polylineCount, int const* polylines,
                             int colorCount, float const* colors);

  // Return count and array as they were set. The result is VREL_S_OK.
  virtual VRINResult GetPoints(int& count, float*& points) const;
  virtual VRINResult GetPolylines(int& count, int*& polylines) const;
  virtual VRINResult GetColors(int& count, float*& colors) const;

  virtual int GetKey() const;

 private:
  int creatorKey;
  int pointCount;
  float* pointArray;
  int polylineCount;
  int* polylineArray;
  bool owned;
  int colorCount;
  float* colorArray;
};
