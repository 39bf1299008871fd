// Single-precision 3 by 3 matrix with a classification.
#pragma once

#include <cstdint>

#include "VRELExport.h"
#include "VRELVectorf.h"

// 3 by 3 matrix of floats for column vectors, with a type that lets later operations take short cuts:
//
//    1  rotation                       2  rotation with a uniform scale
//   -1  rotation and reflection       -2  rotation and reflection with a uniform scale
//    0  anything else
//
//   VRELMath3x3Matrixf const rotation(VRELVectorKf, VRELPIBY2);
//   VRELVectorf const y = rotation * VRELVectorIf;         // 0, 1, 0
//   VRELMath3x3Matrixf const back = rotation.Inverse();  // type 1, so the transpose
//
// PELTMathComputeType classifies with a tolerance of 1e-14, far below the precision of a float: in practice only exact
// results pass, and most computed matrices have type 0.
class VREL_EXPORT VRELMath3x3Matrixf {
 public:
  // Creates the identity, of type 1.
  VRELMath3x3Matrixf() noexcept : VRELMath3x3Matrixf(1.0F) {}
  // Creates s times the identity: type 1 for 1, -1 for -1, 0 for 0, otherwise 2 or -2 by the sign.
  explicit VRELMath3x3Matrixf(float s) noexcept : VRELMath3x3Matrixf(s, s, s) {}
  // Creates a diagonal matrix. The type is 0 unless the three values are equal.
  VRELMath3x3Matrixf(float a, float b, float c) noexcept;
  // Creates the matrix from coefficients row by row. Here and below the type is computed unless noted otherwise.
  VRELMath3x3Matrixf(float c00, float c01, float c02, float c10, float c11, float c12, float c20, float c21,
                     float c22) noexcept;
  // Creates the matrix from its columns.
  VRELMath3x3Matrixf(VRELVectorf const& column0, VRELVectorf const& column1, VRELVectorf const& column2) noexcept;
  // Creates the outer product: element (i, j) is a(i) b(j).
  VRELMath3x3Matrixf(VRELVectorf const& a, VRELVectorf const& b) noexcept;
  // Creates the reflection in the plane through the origin with the given normal, of any length. The type is -1.
  explicit VRELMath3x3Matrixf(VRELVectorf const& normal) noexcept;
  // Creates the right-handed rotation about the axis, of any length, by an angle in radians. The type is 1.
  VRELMath3x3Matrixf(VRELVectorf const& axis, double const& angle) noexcept;

  // Set coefficients and compute the type.
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
  // Returns true if the type is not 0.
  bool IsScaling() const noexcept { return type != 0; }
  // Returns true if the type is 1 or -1.
  bool IsIsometry() const noexcept { return type == 1 || type == -1; }

  // Returns the type for an isometry; otherwise computes the determinant by the rule of Sarrus.
  float Determinant() const noexcept;
  float Trace() const noexcept;
  // Returns the largest absolute value of the nine coefficients.
  // Compatibility: this is not the largest row sum, in spite of the name.
  float InfiniteNorm() const noexcept;

  void Transpose(VRELMath3x3Matrixf& out) const noexcept;
  VRELMath3x3Matrixf Transpose() const noexcept;
  // Sets `out`, which may be this matrix, to the inverse. Returns false and leaves `out` unchanged unless the absolute
  // value of the determinant is above 1e-14.
  // Compatibility: for the types 2 and -2 the inverse is a multiple of the transpose and is classified as such, so that
  // its type is mostly -2, even if the determinant is positive.
  bool Inverse(VRELMath3x3Matrixf& out) const noexcept;
  // Returns the inverse, or the identity if there is none.
  VRELMath3x3Matrixf Inverse() const noexcept;

  // Return a multiple of the matrix. The type does not change for 1, is negated for -1, and is 0 for 0 and NaN. For any
  // other number it is 2 or -2, by the signs of number and type, where type 0 is taken as negative.
  // Compatibility: a multiple of a matrix of type 0 thus gets the type 2 or -2.
  friend VREL_EXPORT VRELMath3x3Matrixf operator*(VRELMath3x3Matrixf const& matrix, float s) noexcept;
  friend VREL_EXPORT VRELMath3x3Matrixf operator*(float s, VRELMath3x3Matrixf const& matrix) noexcept;
  // Divides each coefficient. The type is derived from the divisor as it is from a factor.
  friend VREL_EXPORT VRELMath3x3Matrixf operator/(VRELMath3x3Matrixf const& matrix, float s) noexcept;

  // Returns the matrix product. Its type is the product of the types, with 2 instead of 4 and -2 instead of -4.
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

// Classifies the matrix by its coefficients alone, stores the type in the matrix and returns it.
VREL_EXPORT int PELTMathComputeType(VRELMath3x3Matrixf& matrix) noexcept;

// Returns the vector product.
inline VRELVectorf operator%(VRELVectorf const& a, VRELVectorf const& b) noexcept {
  return a ^ b;
}
