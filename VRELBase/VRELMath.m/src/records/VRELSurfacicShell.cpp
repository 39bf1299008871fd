#include "VRELSurfacicShell.h"

#include <cstddef>
#include <cstring>
#include <memory>

namespace {

bool CanCopy(int count, void const* array) noexcept {
  return count == 0 || (count > 0 && array != nullptr);
}

// Copies count * width elements; also allocates an array for a count of 0. new T[n] does not initialize the elements,
// so that each is written only once.
template <class T>
std::unique_ptr<T[]> DuplicateArray(T const* array, int count, std::size_t width) {
  std::size_t const length = static_cast<std::size_t>(count) * width;
  std::unique_ptr<T[]> copy(new T[length]);
  if (length > 0) std::memcpy(copy.get(), array, length * sizeof(T));
  return copy;
}

}  // namespace

VRELSurfacicShell::VRELSurfacicShell(int key, int lod, int pass) noexcept
    : creatorKey(key),
      levelOfDetail(lod),
      passNumber(pass),
      pointCount(0),
      pointArray(nullptr),
      faceCount(0),
      faceArray(nullptr),
      owned(false),
      normalCount(0),
      normalArray(nullptr),
      colorCount(0),
      colorArray(nullptr) {}

VRELSurfacicShell::~VRELSurfacicShell() {
  if (!owned || pointArray == nullptr) return;
  delete[] pointArray;
  delete[] normalArray;
  delete[] faceArray;
  delete[] colorArray;
}

VRINResult VRELSurfacicShell::SetData(int newPointCount, float const* points, int newNormalCount, float const* normals,
                                      int newFaceCount, int const* faces, int newColorCount, float const* colors) {
  // Compatibility: does not free the arrays of an earlier CopyData.
  owned = false;
  pointCount = newPointCount;
  pointArray = const_cast<float*>(points);
  normalCount = newNormalCount;
  normalArray = const_cast<float*>(normals);
  faceCount = newFaceCount;
  faceArray = const_cast<int*>(faces);
  colorCount = newColorCount;
  colorArray = const_cast<float*>(colors);
  return VREL_S_OK;
}

VRINResult VRELSurfacicShell::CopyData(int newPointCount, float const* points, int newNormalCount, float const* normals,
                                       int newFaceCount, int const* faces, int newColorCount, float const* colors) {
  if (!CanCopy(newPointCount, points) || !CanCopy(newNormalCount, normals) || !CanCopy(newFaceCount, faces) ||
      !CanCopy(newColorCount, colors)) {
    return VREL_E_INVALID_ARGUMENT;
  }
  std::unique_ptr<float[]> copiedPoints = DuplicateArray(points, newPointCount, 3);
  std::unique_ptr<float[]> copiedNormals = DuplicateArray(normals, newNormalCount, 3);
  std::unique_ptr<int[]> copiedFaces = DuplicateArray(faces, newFaceCount, 1);
  std::unique_ptr<float[]> copiedColors = DuplicateArray(colors, newColorCount, 3);
  VRELSurfacicShell::SetData(newPointCount, copiedPoints.release(), newNormalCount, copiedNormals.release(),
                             newFaceCount, copiedFaces.release(), newColorCount, copiedColors.release());
  owned = true;
  return VREL_S_OK;
}

VRINResult VRELSurfacicShell::GetPoints(int& count, float*& points) const {
  count = pointCount;
  points = pointArray;
  return VREL_S_OK;
}

VRINResult VRELSurfacicShell::GetFaces(int& count, int*& faces) const {
  count = faceCount;
  faces = faceArray;
  return VREL_S_OK;
}

VRINResult VRELSurfacicShell::GetNormals(int& count, float*& normals) const {
  count = normalCount;
  normals = normalArray;
  return VREL_S_OK;
}

VRINResult VRELSurfacicShell::GetColors(int& count, float*& colors) const {
  count = colorCount;
  colors = colorArray;
  return VREL_S_OK;
}

int VRELSurfacicShell::GetKey() const {
  return creatorKey;
}

int VRELSurfacicShell::GetLOD() const {
  return levelOfDetail;
}

int VRELSurfacicShell::GetPass() const {
  return passNumber;
}

bool VRELSurfacicShell::IsStripped() const {
  return false;
}
