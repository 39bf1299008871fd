#include "VRELAffine.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Gk_Def.h"
#include "Gk_ErrMgr.h"
#include "Gk_Exception.h"
#include "Gk_Func.h"
#include "VRELStreamFormatter.h"

VRELAffine::VRELAffine(int theDimension) noexcept : dimension(std::min(theDimension, 3)), element{} {}

VRELAffine::VRELAffine(VRELAffine const& other) noexcept : dimension(other.dimension), element{} {
  *this = other;
}

VRELAffine& VRELAffine::operator=(VRELAffine const& other) noexcept {
  for (int i = 0; i < dimension; ++i) std::copy_n(other.element[i], dimension, element[i]);
  return *this;
}

VRELAffine::~VRELAffine() = default;

void VRELAffine::Initialize(double value) noexcept {
  for (int i = 0; i < dimension; ++i) std::fill_n(element[i], dimension, value);
}

void VRELAffine::MakeIdentity() noexcept {
  Initialize(0.0);
  for (int i = 0; i < dimension; ++i) element[i][i] = 1.0;
}

double VRELAffine::GetElement(int row, int column) const {
  CheckIndexes(row, column);
  return element[row][column];
}

void VRELAffine::SetElement(int row, int column, double value) {
  CheckIndexes(row, column);
  element[row][column] = value;
}

void VRELAffine::GetRow(int row, double* out) const {
  for (int j = 0; out != nullptr && j < dimension; ++j) out[j] = GetElement(row, j);
}

void VRELAffine::GetColumn(int column, double* out) const {
  for (int i = 0; out != nullptr && i < dimension; ++i) out[i] = GetElement(i, column);
}

void VRELAffine::SetRow(int row, double const* values) {
  for (int j = 0; values != nullptr && j < dimension; ++j) SetElement(row, j, values[j]);
}

void VRELAffine::SetColumn(int column, double const* values) {
  for (int i = 0; values != nullptr && i < dimension; ++i) SetElement(i, column, values[i]);
}

VRELAffine& VRELAffine::SetTo(VRELAffine const& other) {
  Gk_ErrMgr::checkAbort();
  if (other.dimension != dimension) Gk_ErrMgr::doAssert(__FILE__, __LINE__);
  return *this = other;
}

VRELAffine& VRELAffine::Multiply(double factor) noexcept {
  for (int i = 0; i < dimension; ++i) {
    for (int j = 0; j < dimension; ++j) element[i][j] *= factor;
  }
  return *this;
}

VRELAffine& VRELAffine::Divide(double divisor) {
  Gk_ErrMgr::checkAbort();
  if (!Gk_Func::equal(divisor, 0.0, Gk_Def::FuzzReal)) Gk_ErrMgr::doAssert(__FILE__, __LINE__);
  return Multiply(1.0 / divisor);
}

// Compatibility: each sum is accumulated in its element of `out`. An affine that is multiplied into itself therefore
// reads elements that are already overwritten.
void VRELAffine::Multiply(VRELAffine const& other, VRELAffine& out) const noexcept {
  int const size = std::min(dimension, out.dimension);
  for (int i = 0; i < size; ++i) {
    for (int j = 0; j < size; ++j) {
      out.element[i][j] = 0.0;
      for (int k = 0; k < dimension; ++k) out.element[i][j] += element[i][k] * other.element[k][j];
    }
  }
}

VRELAffine& VRELAffine::Transpose() noexcept {
  for (int i = 0; i < dimension; ++i) {
    for (int j = 0; j < i; ++j) std::swap(element[i][j], element[j][i]);
  }
  return *this;
}

void VRELAffine::GetTranspose(VRELAffine& out) const {
  out.SetTo(*this);
  out.Transpose();
}

double VRELAffine::Determinant() const {
  Gk_ErrMgr::checkAbort();
  if (dimension < 1) Gk_ErrMgr::doAssert(__FILE__, __LINE__);
  Elements const& e = element;
  switch (dimension) {
    case 1:
      return e[0][0];
    case 2:
      return e[0][0] * e[1][1] - e[1][0] * e[0][1];
    case 3:
      return e[0][0] * (e[1][1] * e[2][2] - e[2][1] * e[1][2]) + e[1][0] * (e[0][2] * e[2][1] - e[0][1] * e[2][2]) +
             e[2][0] * (e[0][1] * e[1][2] - e[0][2] * e[1][1]);
    default:
      return 0.0;
  }
}

namespace {

int Modulo(int index, int size) {
  int const rest = index % size;
  return rest < 0 ? rest + size : rest;
}

// Returns the signed determinant of the 2 by 2 matrix that remains without the row and the column.
double SignedMinor(VRELAffine const& affine, int row, int column) {
  VRELAffine minor(2);
  for (int i = 0; i < 2; ++i) {
    for (int j = 0; j < 2; ++j) {
      minor.SetElement(i, j, affine.GetElement(i < row ? i : i + 1, j < column ? j : j + 1));
    }
  }
  double const determinant = minor.Determinant();
  return Gk_Func::isEven(row + column) ? determinant : -determinant;
}

}  // namespace

// In three dimensions, the cyclic indexes (i + 1) mod 3 and (i + 2) mod 3 include the sign of the cofactor. The value
// is checked against the textbook formula; a difference is only asserted.
double VRELAffine::DeterminantOfCofactor(int row, int column) const {
  if (dimension != 2 && dimension != 3) return 0.0;
  int const r = Modulo(row, dimension);
  int const c = Modulo(column, dimension);
  if (dimension == 2) {
    // Compatibility: the sign is opposite to that of a cofactor.
    double const left = element[1 - r][1 - c];
    return Gk_Func::isEven(r + c) ? -left : left;
  }
  int const r1 = (r + 1) % 3;
  int const r2 = (r + 2) % 3;
  int const c1 = (c + 1) % 3;
  int const c2 = (c + 2) % 3;
  double const value = element[r1][c1] * element[r2][c2] - element[r2][c1] * element[r1][c2];
  double const check = SignedMinor(*this, r, c);
  Gk_ErrMgr::checkAbort();
  if (!(std::fabs(value - check) < 1e-10)) Gk_ErrMgr::doAssert(__FILE__, __LINE__);
  return value;
}

// Inverse by the adjugate: the transposed matrix of cofactors divided by the determinant.
void VRELAffine::GetInverse(VRELAffine& out) const {
  int const size = std::min(dimension, out.dimension);
  for (int i = 0; i < size; ++i) {
    for (int j = 0; j < size; ++j) out.element[i][j] = DeterminantOfCofactor(i, j);
  }
  out.Transpose();
  out.Divide(Determinant());
}

bool VRELAffine::operator==(VRELAffine const& other) const noexcept {
  if (other.dimension != dimension) return false;
  for (int i = 0; i < dimension; ++i) {
    for (int j = 0; j < dimension; ++j) {
      if (!Gk_Func::equal(element[i][j], other.element[i][j], Gk_Def::FuzzPos)) return false;
    }
  }
  return true;
}

// Compatibility: no element off the diagonal is tested by itself. In two dimensions the third element of a row is 0.
bool VRELAffine::IsIdentity() const noexcept {
  for (int i = 0; i < dimension; ++i) {
    double const* const row = element[i];
    if (!Gk_Func::equal(row[i], 1.0, Gk_Def::FuzzReal)) return false;
    if (!Gk_Func::equal(row[0] + row[1] + row[2], 1.0, Gk_Def::FuzzReal)) return false;
  }
  return true;
}

// Compatibility: throws directly and not through Gk_ErrMgr::raise, so that no event is sent.
void VRELAffine::CheckIndexes(int row, int column) const {
  bool const isInside = row >= 0 && row < dimension && column >= 0 && column < dimension;
  if (!isInside) throw Gk_Exception("Array index is out of bound");
}

VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELAffine const& affine) {
  for (int i = 0; i < affine.GetDimension(); ++i) {
    formatter << formatter.margin();
    for (int j = 0; j < affine.GetDimension(); ++j) formatter << affine.GetElements()[i][j] << "\t";
    formatter << formatter.endline();
  }
  return formatter;
}
