// Single-precision homogeneous transformation.
#pragma once

#include <cstring>

#include "VRELDirectionf.h"
#include "VRELExport.h"
#include "VRELPointf.h"
#include "VRELVectorf.h"

// 4 by 4 matrix of floats for row vectors: rows 0 to 2 are the images of the axes, row 3 is the translation, and the
// fourth column is normally 0, 0, 0, 1. The determinant and the uniform scaling of the upper 3 by 3 part are cached;
// the cache is valid only after the operations that compute it.
//
//   VREL4x4Matrix const m(VRELVectorf(1.0F, 2.0F, 3.0F), 2.0F);
//   VRELPointf const p = m * VRELPointf(1.0F, 0.0F, 0.0F);  // 3, 2, 3
//
// All arithmetic is done in single precision. No operation fails; a result that cannot be computed is left unchanged.
class VREL_EXPORT VREL4x4Matrix {
 public:
  // Creates the identity; determinant and scaling are 1.
  VREL4x4Matrix() noexcept;
  // Reads sixteen floats, row by row; null creates the identity.
  // Compatibility: determinant and scaling are not computed; both are 0.
  explicit VREL4x4Matrix(float const* elements) noexcept;
  // Creates the scaling by `s`, followed by the translation.
  VREL4x4Matrix(VRELVectorf const& translation, float s) noexcept;
  // Reads three rows of three floats, and the translation; a null row is that of the identity. Computes determinant and
  // scaling.
  VREL4x4Matrix(float const* const* rows, VRELVectorf const& translation) noexcept;
  // Creates the matrix from three rows and the translation. Computes determinant and scaling.
  VREL4x4Matrix(VRELVectorf const& row0, VRELVectorf const& row1, VRELVectorf const& row2,
                VRELVectorf const& translation) noexcept;
  // Creates the rotation about the axis through `point` by an angle equal to the length of the axis, followed by the
  // scaling by `s`; see SetRotation and SetScaling.
  // Compatibility: if the length of the axis is at most 1e-15, the matrix is a scaling by `s` with the last row
  // 0, 0, 1, 0.
  VREL4x4Matrix(VRELVectorf const& axis, VRELPointf const& point, float s) noexcept;
  // Creates the same rotation, followed by the translation, with the upper 3 by 3 part then scaled by `s`. If the
  // length of the axis is at most 1e-15, all elements are 0.
  VREL4x4Matrix(VRELVectorf const& translation, VRELVectorf const& axis, VRELPointf const& point, float s) noexcept;
  VREL4x4Matrix(VREL4x4Matrix const& other) noexcept = default;
  VREL4x4Matrix& operator=(VREL4x4Matrix const& other) noexcept = default;
  // Inline, so that the compiler can remove temporaries.
  virtual ~VREL4x4Matrix() = default;

  // Set or return rows 0 to 2, and row 3 as a point. The setters set the fourth column to 0, 0, 0, 1 and compute
  // determinant and scaling. A row returned as a VRELDirectionf is normalized.
  void SetComponents(VRELVectorf const& row0, VRELVectorf const& row1, VRELVectorf const& row2,
                     VRELPointf const& point) noexcept;
  void SetComponents(VRELDirectionf const& row0, VRELDirectionf const& row1, VRELDirectionf const& row2,
                     VRELPointf const& point) noexcept;
  void GetComponents(VRELVectorf& row0, VRELVectorf& row1, VRELVectorf& row2, VRELPointf& point) const noexcept;
  void GetComponents(VRELDirectionf& row0, VRELDirectionf& row1, VRELDirectionf& row2,
                     VRELPointf& point) const noexcept;

  // Sets the first three values of row 3.
  // Compatibility: the second argument is ignored.
  void SetTranslation(VRELVectorf const& translation, float unused) noexcept;
  // Returns the first three values of row 3.
  void GetTranslation(VRELVectorf& translation) const noexcept;

  // Sets the matrix to the rotation about the direction through `point` by an angle in radians. Computes determinant
  // and scaling.
  // Compatibility: the rotation is left-handed, from y to x about the z axis, opposite to VRELMath3x3Matrixf.
  void SetRotation(VRELDirectionf const& direction, VRELPointf const& point, float const& angle) noexcept;

  // Multiplies the upper 3 by 3 part by `s` and computes determinant and scaling. The translation does not change.
  void SetScaling(float s) noexcept;

  // Returns the sixteen elements, row by row.
  float const* GetElements() const noexcept { return element; }
  // Returns the cached determinant.
  float GetDeterminant() const noexcept { return determinant; }
  // Returns the cached scaling.
  float GetScaling() const noexcept { return scaling; }
  // Computes and caches the determinant of the upper 3 by 3 part.
  void ComputeDeterminant() noexcept;
  // Computes and caches the scaling from the cached determinant: 1 if it is within 1e-6 of 1 or -1, otherwise the cube
  // root of its absolute value.
  // Compatibility: the scaling is never negative, also if the matrix contains a reflection.
  void ComputeScaling() noexcept;

  // Returns true if all sixteen elements are exactly equal; cached values are not compared.
  bool operator==(VREL4x4Matrix const& other) const noexcept;
  bool operator!=(VREL4x4Matrix const& other) const noexcept { return !(*this == other); }
  // Returns true if all sixteen elements are exactly those of the identity.
  bool IsIdentity() const noexcept;

  // Multiplies by `m` from the right, over all sixteen elements: the result applies this matrix first and then `m`. The
  // cached values are multiplied, too.
  VREL4x4Matrix& operator*=(VREL4x4Matrix const& m) noexcept;
  VREL4x4Matrix operator*(VREL4x4Matrix const& m) const noexcept {
    VREL4x4Matrix product(Unset{});
    Row const m0 = m.LoadRow(0);
    Row const m1 = m.LoadRow(1);
    Row const m2 = m.LoadRow(2);
    Row const m3 = m.LoadRow(3);
    for (int i = 0; i < 4; ++i) {
      float const* const e = element + 4 * i;
      Row const row = e[0] * m0 + e[1] * m1 + e[2] * m2 + e[3] * m3;
      std::memcpy(product.element + 4 * i, &row, sizeof row);
    }
    product.determinant = determinant * m.determinant;
    product.scaling = scaling * m.scaling;
    return product;
  }

  // Return the transformed point, vector or direction. The fourth column is ignored; the translation applies to points
  // only.
  VRELPointf operator*(VRELPointf const& point) const noexcept {
    float const x = point.X();
    float const y = point.Y();
    float const z = point.Z();
    float const* const e = element;
    return VRELPointf(e[0] * x + e[4] * y + e[8] * z + e[12], e[1] * x + e[5] * y + e[9] * z + e[13],
                      e[2] * x + e[6] * y + e[10] * z + e[14]);
  }
  VRELVectorf operator*(VRELVectorf const& vector) const noexcept {
    float const x = vector.X();
    float const y = vector.Y();
    float const z = vector.Z();
    float const* const e = element;
    return VRELVectorf(e[0] * x + e[4] * y + e[8] * z, e[1] * x + e[5] * y + e[9] * z, e[2] * x + e[6] * y + e[10] * z);
  }
  VRELDirectionf operator*(VRELDirectionf const& direction) const noexcept {
    return VRELDirectionf(*this * VRELVectorf(direction));
  }

  // Sets `out` to the inverse and computes its determinant and scaling. The fourth column is taken as 0, 0, 0, 1. `out`
  // may be this matrix. Does nothing unless the absolute value of the cached determinant is above 1e-15.
  // Compatibility: the cached determinant is used without checking that it is valid.
  void GetInvertedMatrix(VREL4x4Matrix& out) const noexcept;

  // Writes four floats to `out`: the third column of the transposed inverse of the 4 by 4 matrix, divided by the length
  // of its first three values. Writes 0, 0, 0, 1 if the determinant or that length is 0. Does nothing if `out` is null.
  void ComputeInverseTransposeThirdColumnNormalized(float* out) const noexcept;

 private:
  // Four floats in one SIMD register.
  using Row = float __attribute__((vector_size(16)));

  struct Unset {};
  struct Zeros {};
  explicit VREL4x4Matrix(Unset) noexcept {}
  explicit VREL4x4Matrix(Zeros) noexcept : element{}, determinant(0.0F), scaling(0.0F) {}

  Row LoadRow(int row) const noexcept {
    Row values;
    std::memcpy(&values, element + 4 * row, sizeof values);
    return values;
  }
  void SetRow(int row, VRELVectorf const& values) noexcept;
  VRELVectorf GetRow(int row) const noexcept;
  void SetRows(VRELVectorf const& row0, VRELVectorf const& row1, VRELVectorf const& row2,
               VRELVectorf const& row3) noexcept;
  float Minor(int row, int column) const noexcept;

  float element[16];
  float determinant;
  float scaling;
};

// Identity matrix.
extern VREL_EXPORT VREL4x4Matrix const VREL4x4MatrixI;
