#include "VREL4x4Matrix.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "VRELNormalizef.h"

namespace {

constexpr float kIdentity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

// Lengths of axes and determinants up to this value are taken as 0.
constexpr double kZeroLength = 1e-15;

// The scaling is exactly 1 if the absolute determinant is in this range. The bits are 0x3F7FFFEF and 0x3F800008.
constexpr float kLowestUnitDeterminant = 0.999999F;
constexpr float kHighestUnitDeterminant = 1.000001F;

VRELVectorf FromOrigin(VRELPointf const& point) noexcept {
  return VRELVectorf(point.X(), point.Y(), point.Z());
}

}  // namespace

VREL4x4Matrix::VREL4x4Matrix() noexcept : determinant(1.0F), scaling(1.0F) {
  std::copy_n(kIdentity, 16, element);
}

VREL4x4Matrix::VREL4x4Matrix(float const* elements) noexcept : VREL4x4Matrix() {
  if (elements == nullptr) return;
  std::copy_n(elements, 16, element);
  determinant = 0.0F;
  scaling = 0.0F;
}

VREL4x4Matrix::VREL4x4Matrix(VRELVectorf const& translation, float s) noexcept : VREL4x4Matrix() {
  element[0] = element[5] = element[10] = s;
  SetRow(3, translation);
  determinant = s * s * s;
  scaling = s;
}

VREL4x4Matrix::VREL4x4Matrix(float const* const* rows, VRELVectorf const& translation) noexcept : VREL4x4Matrix() {
  for (int i = 0; rows != nullptr && i < 3; ++i) {
    if (rows[i] != nullptr) SetRow(i, VRELVectorf(rows[i]));
  }
  SetRow(3, translation);
  ComputeDeterminant();
  ComputeScaling();
}

VREL4x4Matrix::VREL4x4Matrix(VRELVectorf const& row0, VRELVectorf const& row1, VRELVectorf const& row2,
                             VRELVectorf const& translation) noexcept {
  SetRows(row0, row1, row2, translation);
  ComputeDeterminant();
  ComputeScaling();
}

VREL4x4Matrix::VREL4x4Matrix(VRELVectorf const& axis, VRELPointf const& point, float s) noexcept
    : VREL4x4Matrix(Zeros{}) {
  float const angle = axis.Norm();
  if (angle > kZeroLength) {
    SetRotation(VRELDirectionf(axis), point, angle);
    if (s != 1.0F) SetScaling(s);
    return;
  }
  element[0] = element[5] = element[10] = s;
  // Compatibility: this 1 is in row 3, column 2, and not in the last element.
  element[14] = 1.0F;
  scaling = s;
  determinant = s * s * s;
}

VREL4x4Matrix::VREL4x4Matrix(VRELVectorf const& translation, VRELVectorf const& axis, VRELPointf const& point,
                             float s) noexcept
    : VREL4x4Matrix(Zeros{}) {
  float const angle = axis.Norm();
  if (angle > kZeroLength) {
    SetRotation(VRELDirectionf(axis), point, angle);
    *this *= VREL4x4Matrix(translation, 1.0F);
  }
  if (s != 1.0F) SetScaling(s);
}

void VREL4x4Matrix::SetComponents(VRELVectorf const& row0, VRELVectorf const& row1, VRELVectorf const& row2,
                                  VRELPointf const& point) noexcept {
  SetRows(row0, row1, row2, FromOrigin(point));
  ComputeDeterminant();
  ComputeScaling();
}

void VREL4x4Matrix::SetComponents(VRELDirectionf const& row0, VRELDirectionf const& row1, VRELDirectionf const& row2,
                                  VRELPointf const& point) noexcept {
  SetComponents(VRELVectorf(row0), VRELVectorf(row1), VRELVectorf(row2), point);
}

void VREL4x4Matrix::GetComponents(VRELVectorf& row0, VRELVectorf& row1, VRELVectorf& row2,
                                  VRELPointf& point) const noexcept {
  row0 = GetRow(0);
  row1 = GetRow(1);
  row2 = GetRow(2);
  point = VRELPointf(element + 12);
}

void VREL4x4Matrix::GetComponents(VRELDirectionf& row0, VRELDirectionf& row1, VRELDirectionf& row2,
                                  VRELPointf& point) const noexcept {
  row0 = GetRow(0);
  row1 = GetRow(1);
  row2 = GetRow(2);
  point = VRELPointf(element + 12);
}

void VREL4x4Matrix::SetTranslation(VRELVectorf const& translation, float /*unused*/) noexcept {
  SetRow(3, translation);
}

void VREL4x4Matrix::GetTranslation(VRELVectorf& translation) const noexcept {
  translation = GetRow(3);
}

// Change of basis: transforms into a frame in which the axis is the z axis through the origin, rotates about z, and
// transforms back, that is F^-1 R F for row vectors. If the axis is parallel to z, the frame is only translated, and
// the sign of z selects the sense of the rotation.
void VREL4x4Matrix::SetRotation(VRELDirectionf const& direction, VRELPointf const& point, float const& angle) noexcept {
  float const x = direction.X();
  float const y = direction.Y();
  float const z = direction.Z();
  float const r = VRELSqrtf(x * x + y * y);
  float rotationAngle = angle;
  VREL4x4Matrix frame;
  if (r > kZeroLength) {
    frame.SetRow(0, VRELVectorf(-y / r, x / r, 0.0F));
    frame.SetRow(1, VRELVectorf(-x * z / r, -y * z / r, r));
    frame.SetRow(2, VRELVectorf(x, y, z));
  } else if (!(z > 0.0F)) {
    rotationAngle = -angle;
  }
  frame.SetRow(3, FromOrigin(point));
  VREL4x4Matrix rotation;
  rotation.element[0] = rotation.element[5] = std::cos(rotationAngle);
  rotation.element[4] = std::sin(rotationAngle);
  rotation.element[1] = -rotation.element[4];
  // The cached determinant of `frame` is still 1, the one of the identity, so that the inversion always takes place.
  frame.GetInvertedMatrix(*this);
  *this *= rotation;
  *this *= frame;
  ComputeDeterminant();
  ComputeScaling();
}

void VREL4x4Matrix::SetScaling(float s) noexcept {
  for (int i = 0; i < 3; ++i) SetRow(i, GetRow(i) * s);
  ComputeDeterminant();
  ComputeScaling();
}

void VREL4x4Matrix::ComputeDeterminant() noexcept {
  float const* const e = element;
  determinant =
      e[0] * (e[5] * e[10] - e[6] * e[9]) - e[4] * (e[1] * e[10] - e[2] * e[9]) + e[8] * (e[1] * e[6] - e[5] * e[2]);
}

void VREL4x4Matrix::ComputeScaling() noexcept {
  float const size = std::fabs(determinant);
  bool const isUnit = size >= kLowestUnitDeterminant && size <= kHighestUnitDeterminant;
  scaling = isUnit ? 1.0F : static_cast<float>(std::pow(static_cast<double>(size), 1.0 / 3.0));
}

bool VREL4x4Matrix::operator==(VREL4x4Matrix const& other) const noexcept {
  return std::equal(std::begin(element), std::end(element), other.element);
}

bool VREL4x4Matrix::IsIdentity() const noexcept {
  return std::equal(std::begin(element), std::end(element), kIdentity);
}

VREL4x4Matrix& VREL4x4Matrix::operator*=(VREL4x4Matrix const& m) noexcept {
  return *this = *this * m;
}

// Inverse of an affine map in block form: the inverse of the 3 by 3 part is its adjugate divided by the determinant
// (Cramer's rule), and the translation becomes -t times that inverse.
void VREL4x4Matrix::GetInvertedMatrix(VREL4x4Matrix& out) const noexcept {
  if (!(std::fabs(static_cast<double>(determinant)) > kZeroLength)) return;
  float const r = 1.0F / determinant;
  float const* const e = element;
  VRELVectorf const row0(
      VRELVectorf(e[5] * e[10] - e[6] * e[9], e[2] * e[9] - e[1] * e[10], e[1] * e[6] - e[2] * e[5]) * r);
  VRELVectorf const row1(
      VRELVectorf(e[6] * e[8] - e[4] * e[10], e[0] * e[10] - e[2] * e[8], e[2] * e[4] - e[0] * e[6]) * r);
  VRELVectorf const row2(VRELVectorf(e[4] * e[9] - e[5] * e[8], e[1] * e[8] - e[0] * e[9], e[0] * e[5] - e[1] * e[4]) *
                         r);
  VRELVectorf const t = GetRow(3);
  out.SetRows(row0, row1, row2, -(row0 * t.X() + row1 * t.Y() + row2 * t.Z()));
  out.ComputeDeterminant();
  out.ComputeScaling();
}

void VREL4x4Matrix::ComputeInverseTransposeThirdColumnNormalized(float* out) const noexcept {
  if (out == nullptr) return;
  std::copy_n(kIdentity + 12, 4, out);
  float determinant4x4 = 0.0F;
  for (int j = 0; j < 4; ++j) {
    float const term = element[j] * Minor(0, j);
    determinant4x4 += j % 2 == 0 ? term : -term;
  }
  if (determinant4x4 == 0.0F) return;
  // The transposed inverse has, at (i, 2), the cofactor of (i, 2) divided by the determinant.
  float column[4];
  for (int i = 0; i < 4; ++i) column[i] = (i % 2 == 0 ? Minor(i, 2) : -Minor(i, 2)) / determinant4x4;
  float const square = column[0] * column[0] + column[1] * column[1] + column[2] * column[2];
  if (square == 0.0F) return;
  float const length = VRELSqrtf(square);
  for (int i = 0; i < 4; ++i) out[i] = column[i] / length;
}

void VREL4x4Matrix::SetRow(int row, VRELVectorf const& values) noexcept {
  values.GetCoord(element[4 * row], element[4 * row + 1], element[4 * row + 2]);
}

VRELVectorf VREL4x4Matrix::GetRow(int row) const noexcept {
  return VRELVectorf(element + 4 * row);
}

void VREL4x4Matrix::SetRows(VRELVectorf const& row0, VRELVectorf const& row1, VRELVectorf const& row2,
                            VRELVectorf const& row3) noexcept {
  SetRow(0, row0);
  SetRow(1, row1);
  SetRow(2, row2);
  SetRow(3, row3);
  element[3] = element[7] = element[11] = 0.0F;
  element[15] = 1.0F;
}

// Returns the determinant of the 3 by 3 matrix that remains without the row and the column.
float VREL4x4Matrix::Minor(int row, int column) const noexcept {
  float m[9];
  int count = 0;
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j) {
      if (i != row && j != column) m[count++] = element[4 * i + j];
    }
  }
  return m[0] * (m[4] * m[8] - m[5] * m[7]) - m[1] * (m[3] * m[8] - m[5] * m[6]) + m[2] * (m[3] * m[7] - m[4] * m[6]);
}
