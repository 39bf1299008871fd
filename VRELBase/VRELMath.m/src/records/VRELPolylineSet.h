// Polylines to be shown.
#pragma once

#include "VRELExport.h"
#include "VRINResult.h"

// Points, the polylines that run through them, and colours, under a key that the creator gives. The arrays belong to
// the caller, who keeps them alive; how indexes and numbers stand in them is agreed between writer and reader, and
// nothing here looks inside.
class VREL_EXPORT VRELPolylineSet {
 public:
  // Counts of 0 and null arrays.
  explicit VRELPolylineSet(int key) noexcept;
  // A copy has the key, and holds the same arrays.
  VRELPolylineSet(VRELPolylineSet const&) noexcept = default;
  VRELPolylineSet& operator=(VRELPolylineSet const&) noexcept = default;
  // Frees none of the arrays, which is promised: SetData, which never owns them, is the only way to bring them.
  virtual ~VRELPolylineSet();

  // Holds the arrays and counts as they are given, without a look at them.
  virtual VRINResult SetData(int pointCount, float const* points, int polylineCount, int const* polylines,
                             int colorCount, float const* colors);

  // Count and array as they were given. Always VREL_S_OK.
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
