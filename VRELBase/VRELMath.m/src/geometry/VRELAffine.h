// Square matrix of a morph.
#pragma once

#include <cstdint>

#include "VRELExport.h"

class VRELStreamFormatter;

// 2 by 2 or 3 by 3 matrix of doubles, the linear part of a morph.
//
//   VRELAffine3D shear;  // the zero matrix
//   shear.MakeIdentity();
//   shear.SetElement(0, 1, -1.0);
//
// Rows and columns are numbered from 0.
//
// Requires: an output argument is a third object of the same dimension. If dimensions differ, only the elements that
// both have are computed.
// Compatibility: a new affine is the zero matrix, and not the identity.
class VREL_EXPORT VRELAffine {
 public:
  using Elements = double[3][3];

  // Creates the zero matrix. `dimension` is 2 or 3; a larger number is taken as 3.
  explicit VRELAffine(int dimension) noexcept;
  // Copies the used elements; the unused elements of a 2D affine are 0.
  VRELAffine(VRELAffine const& other) noexcept;
  // Copies the elements that this affine uses. The dimension does not change.
  VRELAffine& operator=(VRELAffine const& other) noexcept;
  virtual ~VRELAffine();

  // Returns 2 or 3.
  int GetDimension() const noexcept { return dimension; }
  // Returns all stored elements, row by row.
  Elements const& GetElements() const noexcept { return element; }

  // Sets every element to `value`.
  void Initialize(double value) noexcept;
  void MakeIdentity() noexcept;

  // Return or set an element.
  //
  // Errors: throws Gk_Exception "Array index is out of bound" for an invalid row or column. No event is sent.
  double GetElement(int row, int column) const;
  void SetElement(int row, int column, double value);

  // Copy a row or column, as many doubles as the dimension. Do nothing for null.
  //
  // Errors: throw like GetElement.
  void GetRow(int row, double* out) const;
  void GetColumn(int column, double* out) const;
  void SetRow(int row, double const* values);
  void SetColumn(int column, double const* values);

  // Polls for an abort and copies the elements.
  // Requires: the dimensions are equal.
  VRELAffine& SetTo(VRELAffine const& other);
  VRELAffine& Multiply(double factor) noexcept;
  // Polls for an abort and multiplies every element by 1 / divisor; a divisor of 0 results in infinities.
  // Compatibility: asserts that the divisor is 0 within Gk_Def::FuzzReal, so that the assertion fails for every
  // ordinary divisor. It has no effect on the result.
  VRELAffine& Divide(double divisor);

  // Sets `out` to the product of this matrix and `other`.
  // Requires: `out` is neither of the two; its elements are written before the operands are read completely.
  void Multiply(VRELAffine const& other, VRELAffine& out) const noexcept;

  // Transposes in place.
  VRELAffine& Transpose() noexcept;
  void GetTranspose(VRELAffine& out) const;

  // Polls for an abort and returns the determinant.
  double Determinant() const;
  // Polls for an abort and returns the cofactor of (row, column): the signed determinant of the matrix without that row
  // and column. Indexes are taken modulo the dimension.
  // Compatibility: in two dimensions the sign is opposite to that of a cofactor.
  double DeterminantOfCofactor(int row, int column) const;
  // Sets `out` to the inverse; to infinities and NaN if the matrix is singular.
  // Compatibility: in two dimensions the result is the negative of the inverse, a consequence of DeterminantOfCofactor.
  void GetInverse(VRELAffine& out) const;

  // Returns true if the dimensions are equal, and the elements are equal within Gk_Def::FuzzPos.
  bool operator==(VRELAffine const& other) const noexcept;
  bool operator!=(VRELAffine const& other) const noexcept { return !(*this == other); }

  // Returns true if the diagonal element and the sum of each row are 1 within Gk_Def::FuzzReal.
  // Compatibility: the elements off the diagonal are not compared with 0; a row 1, 0.5, -0.5 passes.
  bool IsIdentity() const noexcept;

 private:
  void CheckIndexes(int row, int column) const;

  std::int32_t dimension;
  Elements element;
};

// Writes one line for each row: the margin, then each element followed by a tab.
VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELAffine const& affine);
