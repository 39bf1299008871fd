// Faceted shell for display.
#pragma once

#include "VRELExport.h"
#include "VRINResult.h"

// Faceted shell: arrays of points, normals and colours of three floats each, and an array of ints that describe the
// faces, with a key, a level of detail and a pass chosen by the creator. The layout of the faces is agreed between the
// module that writes them and the one that reads them; this class does not inspect it.
//
//   VRELSurfacicShell shell(1, 0, 0);
//   shell.CopyData(3, points, 1, normals, 4, faces, 0, nullptr);
//   int count = 0;
//   float* own = nullptr;
//   shell.GetPoints(count, own);  // 3 points, owned by the shell
//
// Ownership: after SetData the arrays belong to the caller, who keeps them until the shell is destroyed; after CopyData
// the shell owns copies and frees them.
class VREL_EXPORT VRELSurfacicShell {
 public:
  // Creates a shell with counts of 0 and null arrays.
  VRELSurfacicShell(int key, int lod, int pass) noexcept;
  VRELSurfacicShell(VRELSurfacicShell const&) = delete;
  VRELSurfacicShell& operator=(VRELSurfacicShell const&) = delete;
  // Frees the arrays if the shell owns them.
  virtual ~VRELSurfacicShell();

  // Stores counts and pointers without copying or checking them. Returns VREL_S_OK.
  virtual VRINResult SetData(int pointCount, float const* points, int normalCount, float const* normals, int faceCount,
                             int const* faces, int colorCount, float const* colors);
  // Copies the arrays.
  //
  // Errors: VREL_E_INVALID_ARGUMENT, without a change, if a count is negative or an array with a count above 0 is null;
  // std::bad_alloc, without a change, if memory runs out.
  // Compatibility: neither SetData nor CopyData frees the arrays of an earlier CopyData, because callers may still use
  // them. A caller who has fetched them can free them with delete[].
  virtual VRINResult CopyData(int pointCount, float const* points, int normalCount, float const* normals, int faceCount,
                              int const* faces, int colorCount, float const* colors);

  // Return count and array; the ownership does not change. The result is VREL_S_OK.
  virtual VRINResult GetPoints(int& count, float*& points) const;
  virtual VRINResult GetFaces(int& count, int*& faces) const;
  virtual VRINResult GetNormals(int& count, float*& normals) const;
  virtual VRINResult GetColors(int& count, float*& colors) const;

  virtual int GetKey() const;
  virtual int GetLOD() const;
  virtual int GetPass() const;
  // Returns true if the faces are triangle strips; false here.
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
