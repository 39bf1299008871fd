// The single-precision linear map that knows of what kind it is.
#pragma once

#include <cstdint>

#include "VRELExport.h"
#include "VRELVectorf.h"

// Nine floats, row by row, for column vectors, and a type by which later operations take short cuts:
//
//    1  a rotation                       2  a rotation with a uniform scale
//   -1  the same with a reflection      -2  the same with a reflection
//    0  anything else
//
// PELTMathComputeType tells the type with a tolerance of 1e-14, far below the precision of a float: in practice only
// exact results pass, and most computed matrices have type 0.
class VREL_EXPORT VRELMath3x3Matrixf {
 public:
  // The identity, of type 1.
  VRELMath3x3Matrixf() noexcept : VRELMath3x3Matrixf(1.0F) {}
  // s on the diagonal; 1 and -1 are isometries, the sign of another s gives type 2 or -2, and 0 type 0.
  explicit VRELMath3x3Matrixf(float s) noexcept : VRELMath3x3Matrixf(s, s, s) {}
  // The diagonal. Type 0 unless the three are equal.
  VRELMath3x3Matrixf(float a, float b, float c) noexcept;
  // Row by row. Here and below the type is computed where nothing else is said.
  VRELMath3x3Matrixf(float c00, float c01, float c02, float c10, float c11, float c12, float c20, float c21,
                     float c22) noexcept;
  // The columns.
  VRELMath3x3Matrixf(VRELVectorf const& column0, VRELVectorf const& column1, VRELVectorf const& column2) noexcept;
  // The outer product: element (i, j) is a(i) b(j).
  VRELMath3x3Matrixf(VRELVectorf const& a, VRELVectorf const& b) noexcept;
  // The reflection in the plane through the origin to which the vector, of any length, is normal. Type -1.
  explicit VRELMath3x3Matrixf(VRELVectorf const& normal) noexcept;
  // The right-handed rotation about the axis, of any length, by an angle in radians. Type 1.
  VRELMath3x3Matrixf(VRELVectorf const& axis, double const& angle) noexcept;

  // Replace coefficients, and compute the type.
  void SetCoef(float c00, float c01, float c02, float c10, float c11, float c12, float c20, float c21,
               float c22) noexcept;
  void SetMatrix(VRELVectorf const& column0, VRELVectorf const& column1, VRELVectorf const& column2) noexcept;
  void SetFirstColumn(VRELVectorf const& column) noexcept;
  void SetSecondColumn(VRELVectorf const& column) noexcept;
  void SetThirdColumn(VRELVectorf const& column) noexcept;

  void GetCoef(float& c00, float& c01, float& c02, float& c10, float& c11, float& c12, float& c20, float& c21,
               float& c22) const noexcept;
  void GetFirstColumn(VRELVectorf& column) const noexcept;
  void GetSecondColumn(VRELVectorf& column) const noexcept;
  void GetThirdColumn(VRELVectorf& column) const noexcept;

  int GetType() const noexcept { return type; }
  // Whether the type is not 0.
  bool IsScaling() const noexcept { return type != 0; }
  // Whether the type is 1 or -1.
  bool IsIsometry() const noexcept { return type == 1 || type == -1; }

  // The type itself for an isometry, otherwise by the rule of Sarrus.
  float Determinant() const noexcept;
  float Trace() const noexcept;
  // The largest absolute value among the nine coefficients. That it is no sum of a row is promised.
  float InfiniteNorm() const noexcept;

  void Transpose(VRELMath3x3Matrixf& out) const noexcept;
  VRELMath3x3Matrixf Transpose() const noexcept;
  // False, and out as it was, unless the absolute value of the determinant is above 1e-14. Out may be this matrix. The
  // type of the inverse is that of the transpose, or of a multiple of it for the types 2 and -2: that the inverse of a
  // scaling thus mostly has type -2, whatever its sign, is promised.
  bool Inverse(VRELMath3x3Matrixf& out) const noexcept;
  // The identity where there is no inverse.
  VRELMath3x3Matrixf Inverse() const noexcept;

  // The type of a multiple is that of the matrix for 1 and its negative for -1; 0 for 0. Otherwise it is 2 or -2, by
  // the signs of number and type, where a type 0 counts as below 0: that each such multiple of a matrix of type 0 gets
  // a type is promised.
  friend VREL_EXPORT VRELMath3x3Matrixf operator*(VRELMath3x3Matrixf const& matrix, float s) noexcept;
  friend VREL_EXPORT VRELMath3x3Matrixf operator*(float s, VRELMath3x3Matrixf const& matrix) noexcept;
  // Divides each coefficient; the type goes by the divisor as it goes by the factor.
  friend VREL_EXPORT VRELMath3x3Matrixf operator/(VRELMath3x3Matrixf const& matrix, float s) noexcept;

  // The type of a product is the product of the types, with 2 for 4 and -2 for -4.
  friend VREL_EXPORT VRELMath3x3Matrixf operator*(VRELMath3x3Matrixf const& a, VRELMath3x3Matrixf const& b) noexcept;
  friend VREL_EXPORT VRELVectorf operator*(VRELMath3x3Matrixf const& matrix, VRELVectorf const& vector) noexcept;
  friend VREL_EXPORT VRELMath3x3Matrixf operator+(VRELMath3x3Matrixf const& a, VRELMath3x3Matrixf const& b) noexcept;
  friend VREL_EXPORT VRELMath3x3Matrixf operator-(VRELMath3x3Matrixf const& a, VRELMath3x3Matrixf const& b) noexcept;

  friend VREL_EXPORT int PELTMathComputeType(VRELMath3x3Matrixf& matrix) noexcept;

 private:
  int TypeOfMultiple(float s) const noexcept;
  int ComputedType() const noexcept;
  VRELVectorf Column(int column) const noexcept;
  void SetColumn(int column, VRELVectorf const& values) noexcept;
  float Sarrus() const noexcept;

  float coefficient[9];
  std::int32_t type;
};

// Computes the type of the matrix by its coefficients alone, stores it in the matrix and returns it.
VREL_EXPORT int PELTMathComputeType(VRELMath3x3Matrixf& matrix) noexcept;

// The vector product.
inline VRELVectorf operator%(VRELVectorf const& a, VRELVectorf const& b) noexcept {
  return a ^ b;
}
