// The square matrix of a morph.
#pragma once

#include <cstdint>

#include "VRELExport.h"

class VRELStreamFormatter;

// Two by two or three by three doubles. A new affine is the zero matrix, and not the identity.
//
//   VRELAffine3D turn;
//   turn.MakeIdentity();
//   turn.SetElement(0, 1, -1.0);
//
// Rows and columns count from 0. An operation that is given an affine to write into must get one that takes no part in
// the operation otherwise, of the same dimension; elements beyond the smaller dimension are left out.
class VREL_EXPORT VRELAffine {
 public:
  using Elements = double[3][3];

  // The dimension is 2 or 3; a larger number counts as 3.
  explicit VRELAffine(int dimension) noexcept;
  // Copies the elements that are used; a 2D affine holds 0 in the others.
  VRELAffine(VRELAffine const& other) noexcept;
  // Copies the elements that this affine uses. The dimension stays.
  VRELAffine& operator=(VRELAffine const& other) noexcept;
  virtual ~VRELAffine();

  // 2 or 3.
  int GetDimension() const noexcept { return dimension; }
  // All stored elements, row by row.
  Elements const& GetElements() const noexcept { return element; }

  void Initialize(double value) noexcept;
  void MakeIdentity() noexcept;

  // Each throws a Gk_Exception, "Array index is out of bound", for a row or column that the affine does not have; no
  // event tells of it.
  double GetElement(int row, int column) const;
  void SetElement(int row, int column, double value);

  // As many doubles as the dimension. Null is neither read nor written.
  void GetRow(int row, double* out) const;
  void GetColumn(int column, double* out) const;
  void SetRow(int row, double const* values);
  void SetColumn(int column, double const* values);

  // Polls for an abort, then copies the elements; the dimensions are presumed to be the same.
  VRELAffine& SetTo(VRELAffine const& other);
  VRELAffine& Multiply(double factor) noexcept;
  // Multiplies by 1 / divisor, so that 0 gives infinities. Polls for an abort. The presumption is that the divisor is 0
  // within Gk_Def::FuzzReal; that it fails for each ordinary divisor is promised.
  VRELAffine& Divide(double divisor);

  // out = this times other.
  void Multiply(VRELAffine const& other, VRELAffine& out) const noexcept;

  // In place.
  VRELAffine& Transpose() noexcept;
  void GetTranspose(VRELAffine& out) const;

  // Poll for an abort.
  double Determinant() const;
  // The signed determinant of what is left without the row and the column. That in two dimensions it has the opposite
  // sign is promised. Indexes count round the dimension.
  double DeterminantOfCofactor(int row, int column) const;
  // The inverse in three dimensions; infinities or what is not a number for a singular matrix. That in two dimensions
  // it is minus the inverse, as follows from the cofactors, is promised.
  void GetInverse(VRELAffine& out) const;

  // The dimensions are the same and the elements equal within Gk_Def::FuzzPos.
  bool operator==(VRELAffine const& other) const noexcept;
  bool operator!=(VRELAffine const& other) const noexcept { return !(*this == other); }

  // Whether in each row the element on the diagonal and the sum of the row are 1 within Gk_Def::FuzzReal. That a row
  // like 1, 0.5, -0.5 passes is promised.
  bool IsIdentity() const noexcept;

 private:
  void CheckIndexes(int row, int column) const;

  std::int32_t dimension;
  Elements element;
};

// A line for each row: the margin, then each element followed by a tab.
VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELAffine const& affine);
