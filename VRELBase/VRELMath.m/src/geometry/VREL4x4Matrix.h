// The single-precision homogeneous transformation.
#pragma once

#include <cstring>

#include "VRELDirectionf.h"
#include "VRELExport.h"
#include "VRELPointf.h"
#include "VRELVectorf.h"

// Sixteen floats, for row vectors: rows 0 to 2 are the images of the axes, row 3 is the translation, and the fourth
// column is normally 0, 0, 0, 1. The determinant and the uniform scaling of the upper 3 by 3 part are cached beside
// them, and stand valid only after the operations that say so.
//
//   VREL4x4Matrix const m(VRELVectorf(1.0F, 2.0F, 3.0F), 2.0F);
//   VRELPointf const p = m * VRELPointf(1.0F, 0.0F, 0.0F);  // 3, 2, 3
//
// Each step of the arithmetic is taken in single precision. Nothing fails: what cannot be computed is left as it was.
class VREL_EXPORT VREL4x4Matrix {
 public:
  // The identity; determinant and scaling are 1.
  VREL4x4Matrix() noexcept;
  // From sixteen floats, row by row; null gives the identity. That determinant and scaling are not computed is
  // promised: both are 0.
  explicit VREL4x4Matrix(float const* elements) noexcept;
  // The scaling s, and then the translation.
  VREL4x4Matrix(VRELVectorf const& translation, float s) noexcept;
  // From three rows of three floats, and the translation; null rows are those of the identity. Computes both cached
  // values.
  VREL4x4Matrix(float const* const* rows, VRELVectorf const& translation) noexcept;
  // From three rows and the translation, likewise.
  VREL4x4Matrix(VRELVectorf const& row0, VRELVectorf const& row1, VRELVectorf const& row2,
                VRELVectorf const& translation) noexcept;
  // The rotation about the axis through the point by an angle that is the length of the axis, then scaled by s; see
  // SetRotation and SetScaling. Without an axis, up to a length of 1e-15, a scaling by s whose last row is
  // 0, 0, 1, 0, which is promised.
  VREL4x4Matrix(VRELVectorf const& axis, VRELPointf const& point, float s) noexcept;
  // The same rotation, then the translation, then scaled by s, the translation not. Zeros without an axis.
  VREL4x4Matrix(VRELVectorf const& translation, VRELVectorf const& axis, VRELPointf const& point, float s) noexcept;
  VREL4x4Matrix(VREL4x4Matrix const& other) noexcept = default;
  VREL4x4Matrix& operator=(VREL4x4Matrix const& other) noexcept = default;
  // Inline, so that an intermediate result costs nothing.
  virtual ~VREL4x4Matrix() = default;

  // The three rows, and row 3; the setters compute both cached values. A row comes out as a direction of length 1.
  void SetComponents(VRELVectorf const& row0, VRELVectorf const& row1, VRELVectorf const& row2,
                     VRELPointf const& point) noexcept;
  void SetComponents(VRELDirectionf const& row0, VRELDirectionf const& row1, VRELDirectionf const& row2,
                     VRELPointf const& point) noexcept;
  void GetComponents(VRELVectorf& row0, VRELVectorf& row1, VRELVectorf& row2, VRELPointf& point) const noexcept;
  void GetComponents(VRELDirectionf& row0, VRELDirectionf& row1, VRELDirectionf& row2,
                     VRELPointf& point) const noexcept;

  // The first three values of row 3. That the float is not used is promised.
  void SetTranslation(VRELVectorf const& translation, float unused) noexcept;
  void GetTranslation(VRELVectorf& translation) const noexcept;

  // Makes this the rotation about the direction through the point by an angle in radians. That it turns from y to x
  // as seen against the direction, the other way round than VRELMath3x3Matrixf does, is promised. Computes both cached
  // values.
  void SetRotation(VRELDirectionf const& direction, VRELPointf const& point, float const& angle) noexcept;

  // Multiplies the upper 3 by 3 part by s, leaves the translation, and computes both cached values.
  void SetScaling(float s) noexcept;

  // The sixteen elements, row by row.
  float const* GetElements() const noexcept { return element; }
  // The cached values.
  float GetDeterminant() const noexcept { return determinant; }
  float GetScaling() const noexcept { return scaling; }
  // The determinant of the upper 3 by 3 part.
  void ComputeDeterminant() noexcept;
  // From the cached determinant: 1 if it lies within 1e-6 of 1 or -1, otherwise the cube root of its absolute value.
  // That a reflection has the scaling of its mirror image is promised.
  void ComputeScaling() noexcept;

  // Whether the sixteen elements are exactly equal; cached values are not compared.
  bool operator==(VREL4x4Matrix const& other) const noexcept;
  bool operator!=(VREL4x4Matrix const& other) const noexcept { return !(*this == other); }
  // Whether the sixteen elements are exactly those of the identity.
  bool IsIdentity() const noexcept;

  // This times m, over all sixteen elements: runs this first and then m. The cached values are multiplied too.
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

  // The images; the fourth column plays no part, and the translation none for a vector or direction.
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

  // The inverse of the upper 3 by 3 part and of the translation; the fourth column of this counts as 0, 0, 0, 1. Does
  // nothing unless the absolute value of the cached determinant is above 1e-15; that the cached one counts, be it valid
  // or not, is promised. The out object may be this one; both its cached values are computed.
  void GetInvertedMatrix(VREL4x4Matrix& out) const noexcept;

  // Four floats: the third column of the transposed inverse of all sixteen elements, divided by the length of its first
  // three. 0, 0, 0, 1 if the determinant or that length is 0. Does nothing for null.
  void ComputeInverseTransposeThirdColumnNormalized(float* out) const noexcept;

 private:
  // Four floats side by side, as the processor computes them in one step.
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

// The identity.
extern VREL_EXPORT VREL4x4Matrix const VREL4x4MatrixI;
