// Placement of a component in an assembly.
#pragma once

#include "VRELExport.h"
#include "VRINResult.h"

// Affine map of a 3 by 3 linear part and a translation in doubles, with a separate scale. It reads and writes the
// matrix layouts of CAD formats and detects on demand whether it is valid, a mirror or the identity.
//
//   VRELAssemblyComponentTransform placement;
//   double const shift[] = {0.0, 0.0, 25.0};
//   placement.SetTranslation(shift);
//   float point[] = {1.0F, 2.0F, 3.0F};
//   placement.ApplyTransform(point);  // now 1, 2, 28
//
// The twelve doubles are four columns of three: element (row r, column c) has the index 3c + r; the last column is the
// translation. The bottom row 0, 0, 0, 1 is not stored.
//
// Errors: operations that take an array return VREL_E_INVALID_ARGUMENT for null, without a change, otherwise VREL_S_OK.
// Thread safety: none, also for const objects, because the determinant and the flags are computed on first use.
// Compatibility: the scale is stored and returned, but not applied by this class. VRELMorph3D applies it.
class VREL_EXPORT VRELAssemblyComponentTransform {
 public:
  // Creates the identity of scale 1.
  VRELAssemblyComponentTransform() noexcept;
  // Copies twelve doubles and the scale; a null `theMatrix` creates the identity of scale 1.
  VRELAssemblyComponentTransform(double const* theMatrix, double const& theScale) noexcept;
  VRELAssemblyComponentTransform(VRELAssemblyComponentTransform const& other) noexcept;
  VRELAssemblyComponentTransform& operator=(VRELAssemblyComponentTransform const& other) noexcept = default;
  virtual ~VRELAssemblyComponentTransform();

  // Copy the twelve doubles.
  VRINResult Get(double* out) const;
  VRINResult Set(double const* in);

  // Copy the nine doubles of the linear part.
  VRINResult GetRotation(double* out) const;
  VRINResult SetRotation(double const* in);

  // Copy the three doubles of the translation.
  VRINResult GetTranslation(double* out) const;
  VRINResult SetTranslation(double const* in);

  // Return or set the scale. The result is VREL_S_OK.
  VRINResult GetScale(double& out) const;
  VRINResult SetScale(double value);

  // Writes sixteen floats, column by column.
  VRINResult Get4x4ByColumn(float* out) const;
  // Writes sixteen floats, row by row.
  VRINResult Get4x4ByRow(float* out) const;
  // Reads sixteen floats, column by column; the fourth value of each column is ignored.
  VRINResult Set4x4ByColumn(float const* in);
  // Reads twelve floats, row by row.
  VRINResult Set3x4ByRow(float const* in);

  // Returns the determinant of the linear part, without the scale. The result is VREL_S_OK.
  VRINResult GetDeterminant(double& out) const;

  // Returns true if the determinant is not 0.
  // Compatibility: a NaN determinant is valid.
  bool IsValid() const;
  // Returns true if the determinant is negative.
  bool IsMirrorTransform() const;
  // Returns true if each of the twelve doubles differs from that of the identity by less than 1e-6.
  bool IsIdentityTransform() const;

  // Transform a point of three floats in place, computed in doubles. ApplyRotation leaves out the translation. If
  // IsIdentityTransform() returns true, the point does not change, bit for bit.
  VRINResult ApplyRotation(float* point) const;
  VRINResult ApplyTransform(float* point) const;

  // Returns the map that applies `other` first and then this one.
  // Compatibility: its scale is 1; the scales of the operands are not combined.
  VRELAssemblyComponentTransform operator*(VRELAssemblyComponentTransform const& other) const;

 private:
  static constexpr int kColumns = 4;

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
