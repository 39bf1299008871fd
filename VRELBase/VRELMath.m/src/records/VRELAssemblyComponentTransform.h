// The placement of one component in an assembly.
#pragma once

#include "VRELExport.h"
#include "VRINResult.h"

// An affine map: a linear part of 3 by 3 and a translation, in doubles, with a scale beside them. It reads and writes
// the layouts of the formats, and tells on demand whether it is valid, mirrors or is the identity.
//
//   VRELAssemblyComponentTransform placement;
//   double const shift[] = {0.0, 0.0, 25.0};
//   placement.SetTranslation(shift);
//   float point[] = {1.0F, 2.0F, 3.0F};
//   placement.ApplyTransform(point);  // now 1, 2, 28
//
// The twelve doubles are four columns of three: element (row r, column c) has index 3c + r, the last column being the
// translation. The bottom row 0, 0, 0, 1 is not held.
//
// The scale is held and given out and never applied here, which is promised: whoever builds a morph from the transform
// applies it.
//
// Each operation that takes an array gives VREL_E_INVALID_ARGUMENT for null and then changes nothing, VREL_S_OK
// otherwise. What a transform tells of itself is cached, also in a constant one: it stays on one thread.
class VREL_EXPORT VRELAssemblyComponentTransform {
 public:
  // The identity, of scale 1.
  VRELAssemblyComponentTransform() noexcept;
  // Twelve doubles and a scale; the identity of scale 1 where `theMatrix` is null.
  VRELAssemblyComponentTransform(double const* theMatrix, double const& theScale) noexcept;
  VRELAssemblyComponentTransform(VRELAssemblyComponentTransform const& other) noexcept;
  VRELAssemblyComponentTransform& operator=(VRELAssemblyComponentTransform const& other) noexcept = default;
  virtual ~VRELAssemblyComponentTransform();

  // Twelve doubles.
  VRINResult Get(double* out) const;
  VRINResult Set(double const* in);

  // The nine doubles of the linear part.
  VRINResult GetRotation(double* out) const;
  VRINResult SetRotation(double const* in);

  // Three doubles.
  VRINResult GetTranslation(double* out) const;
  VRINResult SetTranslation(double const* in);

  // Always VREL_S_OK.
  VRINResult GetScale(double& out) const;
  VRINResult SetScale(double value);

  // Sixteen floats, column after column.
  VRINResult Get4x4ByColumn(float* out) const;
  // Sixteen floats, row after row.
  VRINResult Get4x4ByRow(float* out) const;
  // Sixteen floats, column after column; the fourth of each column is not looked at.
  VRINResult Set4x4ByColumn(float const* in);
  // Twelve floats, row after row.
  VRINResult Set3x4ByRow(float const* in);

  // That of the linear part; the scale does not enter. Always VREL_S_OK.
  VRINResult GetDeterminant(double& out) const;

  // Whether the determinant is not 0. That one which is not a number counts as valid is promised.
  bool IsValid() const;
  // Whether the determinant is below 0.
  bool IsMirrorTransform() const;
  // Whether each of the twelve doubles lies less than 1e-6 off that of the identity.
  bool IsIdentityTransform() const;

  // Put the image of a point of three floats in its place, computed in doubles. An identity, as told above, leaves the
  // point as it is, bit for bit. A rotation leaves the translation out.
  VRINResult ApplyRotation(float* point) const;
  VRINResult ApplyTransform(float* point) const;

  // The map that runs `other` first and then this. Its scale is 1, whatever the scales of the two.
  VRELAssemblyComponentTransform operator*(VRELAssemblyComponentTransform const& other) const;

 private:
  static constexpr int columns = 4;

  void ResetFlags() noexcept;
  void SetFlags() const;
  bool IsCloseToIdentity() const;
  double Row(int row, double x, double y, double z) const;

  double matrix[12];
  mutable double determinant;
  double scale;
  mutable bool determinantKnown;
  mutable bool flagsKnown;
  mutable bool valid;
  mutable bool identity;
  mutable bool mirror;
};
