// A faceted shell to be shown.
#pragma once

#include "VRELExport.h"
#include "VRINResult.h"

// Points, normals and colours of three floats each, and faces of one int for each that is counted, under a key, a level
// of detail and a pass that the creator gives. How vertices and their numbers stand among the faces is agreed between
// writer and reader, and nothing here looks inside.
//
// The arrays either stay with the caller, who keeps them alive (SetData), or are copied into arrays of the shell
// (CopyData), which go with it.
class VREL_EXPORT VRELSurfacicShell {
 public:
  // Counts of 0 and null arrays.
  VRELSurfacicShell(int key, int lod, int pass) noexcept;
  VRELSurfacicShell(VRELSurfacicShell const&) = delete;
  VRELSurfacicShell& operator=(VRELSurfacicShell const&) = delete;
  // Frees the arrays if they are the shell's.
  virtual ~VRELSurfacicShell();

  // Holds the arrays and counts as they are given, without a look at them. Always VREL_S_OK.
  virtual VRINResult SetData(int pointCount, float const* points, int normalCount, float const* normals, int faceCount,
                             int const* faces, int colorCount, float const* colors);
  // Copies the arrays. VREL_E_INVALID_ARGUMENT, and nothing changes, for a count below 0 and for a null array with a
  // count above 0. Throws std::bad_alloc, and nothing changes.
  //
  // Neither operation frees what an earlier CopyData has allocated, which is promised: who has fetched those arrays
  // holds on to them, and may release them with delete[].
  virtual VRINResult CopyData(int pointCount, float const* points, int normalCount, float const* normals, int faceCount,
                              int const* faces, int colorCount, float const* colors);

  // Count and array, which stays with its owner. Always VREL_S_OK.
  virtual VRINResult GetPoints(int& count, float*& points) const;
  virtual VRINResult GetFaces(int& count, int*& faces) const;
  virtual VRINResult GetNormals(int& count, float*& normals) const;
  virtual VRINResult GetColors(int& count, float*& colors) const;

  virtual int GetKey() const;
  virtual int GetLOD() const;
  virtual int GetPass() const;
  // Whether the faces are triangle strips: no.
  virtual bool IsStripped() const;

 private:
  int creatorKey;
  int levelOfDetail;
  int passNumber;
  int pointCount;
  float* pointArray;
  int faceCount;
  int* faceArray;
  bool owned;
  int normalCount;
  float* normalArray;
  int colorCount;
  float* colorArray;
};
