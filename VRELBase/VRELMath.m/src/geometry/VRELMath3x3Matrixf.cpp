#include "VRELMath3x3Matrixf.h"

#include <algorithm>
#include <cmath>
#include <iterator>

// Classification: a matrix whose columns are orthogonal to each other is a rotation, a reflection or both, times a
// scale, if all columns have the same length. The type then records the sign of the determinant and whether the length
// is 1. The type is only a cache for Determinant and Inverse: the inverse of an isometry is its transpose, the inverse
// of a uniformly scaled one is the transpose times |det|^(-2/3), and any other matrix is inverted by its adjugate
// (Cramer's rule).

namespace {

// Numbers up to this value are taken as 0: the float nearest to 1e-14, bits 0x283424DC.
constexpr float kTolerance = 1e-14F;

// Compatibility: the exponents are the floats nearest to 1/3 and 2/3, widened, and not the doubles. The scale computed
// with them is slightly off, so that most scaled rotations get the type 0.
constexpr double kOneThird = 1.0F / 3.0F;
constexpr double kTwoThirds = 2.0F / 3.0F;

int TypeOfScale(float s) noexcept {
  if (s == 1.0F) return 1;
  if (s == -1.0F) return -1;
  return s > 0.0F ? 2 : s < 0.0F ? -2 : 0;
}

}  // namespace

VRELMath3x3Matrixf::VRELMath3x3Matrixf(float a, float b, float c) noexcept
    : coefficient{a, 0.0F, 0.0F, 0.0F, b, 0.0F, 0.0F, 0.0F, c}, type(a == b && b == c ? TypeOfScale(a) : 0) {}

VRELMath3x3Matrixf::VRELMath3x3Matrixf(float c00, float c01, float c02, float c10, float c11, float c12, float c20,
                                       float c21, float c22) noexcept
    : coefficient{c00, c01, c02, c10, c11, c12, c20, c21, c22}, type(0) {
  PELTMathComputeType(*this);
}

VRELMath3x3Matrixf::VRELMath3x3Matrixf(VRELVectorf const& column0, VRELVectorf const& column1,
                                       VRELVectorf const& column2) noexcept
    : VRELMath3x3Matrixf(column0.X(), column1.X(), column2.X(), column0.Y(), column1.Y(), column2.Y(), column0.Z(),
                         column1.Z(), column2.Z()) {}

VRELMath3x3Matrixf::VRELMath3x3Matrixf(VRELVectorf const& a, VRELVectorf const& b) noexcept
    : VRELMath3x3Matrixf(a * b.X(), a * b.Y(), a * b.Z()) {}

VRELMath3x3Matrixf::VRELMath3x3Matrixf(VRELVectorf const& normal) noexcept : type(-1) {
  VRELVectorf unit(normal);
  unit.Normalize();
  float const n[] = {unit.X(), unit.Y(), unit.Z()};
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) coefficient[3 * i + j] = (i == j ? 1.0F : 0.0F) - 2.0F * n[i] * n[j];
  }
}

VRELMath3x3Matrixf::VRELMath3x3Matrixf(VRELVectorf const& axis, double const& angle) noexcept : type(1) {
  VRELVectorf unit(axis);
  unit.Normalize();
  double const a = unit.X();
  double const b = unit.Y();
  double const c = unit.Z();
  double const sine = std::sin(angle);
  double const cosine = std::cos(angle);
  double const rotation[] = {
      a * a + (b * b + c * c) * cosine,  a * b - a * b * cosine - c * sine, a * c - a * c * cosine + b * sine,
      a * b - a * b * cosine + c * sine, b * b + (a * a + c * c) * cosine,  b * c - b * c * cosine - a * sine,
      a * c - a * c * cosine - b * sine, b * c - b * c * cosine + a * sine, c * c + (a * a + b * b) * cosine,
  };
  for (int i = 0; i < 9; ++i) coefficient[i] = static_cast<float>(rotation[i]);
}

void VRELMath3x3Matrixf::SetCoef(float c00, float c01, float c02, float c10, float c11, float c12, float c20, float c21,
                                 float c22) noexcept {
  *this = VRELMath3x3Matrixf(c00, c01, c02, c10, c11, c12, c20, c21, c22);
}

void VRELMath3x3Matrixf::SetMatrix(VRELVectorf const& column0, VRELVectorf const& column1,
                                   VRELVectorf const& column2) noexcept {
  *this = VRELMath3x3Matrixf(column0, column1, column2);
}

void VRELMath3x3Matrixf::SetFirstColumn(VRELVectorf const& column) noexcept {
  SetColumn(0, column);
}

void VRELMath3x3Matrixf::SetSecondColumn(VRELVectorf const& column) noexcept {
  SetColumn(1, column);
}

void VRELMath3x3Matrixf::SetThirdColumn(VRELVectorf const& column) noexcept {
  SetColumn(2, column);
}

void VRELMath3x3Matrixf::GetCoef(float& c00, float& c01, float& c02, float& c10, float& c11, float& c12, float& c20,
                                 float& c21, float& c22) const noexcept {
  float* const out[] = {&c00, &c01, &c02, &c10, &c11, &c12, &c20, &c21, &c22};
  for (int i = 0; i < 9; ++i) *out[i] = coefficient[i];
}

void VRELMath3x3Matrixf::GetFirstColumn(VRELVectorf& column) const noexcept {
  column = Column(0);
}

void VRELMath3x3Matrixf::GetSecondColumn(VRELVectorf& column) const noexcept {
  column = Column(1);
}

void VRELMath3x3Matrixf::GetThirdColumn(VRELVectorf& column) const noexcept {
  column = Column(2);
}

float VRELMath3x3Matrixf::Determinant() const noexcept {
  return IsIsometry() ? static_cast<float>(type) : Sarrus();
}

float VRELMath3x3Matrixf::Trace() const noexcept {
  return coefficient[0] + coefficient[4] + coefficient[8];
}

float VRELMath3x3Matrixf::InfiniteNorm() const noexcept {
  float largest = 0.0F;
  for (float value : coefficient) largest = std::max(largest, std::fabs(value));
  return largest;
}

void VRELMath3x3Matrixf::Transpose(VRELMath3x3Matrixf& out) const noexcept {
  float const* const c = coefficient;
  out.SetCoef(c[0], c[3], c[6], c[1], c[4], c[7], c[2], c[5], c[8]);
}

VRELMath3x3Matrixf VRELMath3x3Matrixf::Transpose() const noexcept {
  VRELMath3x3Matrixf transposed;
  Transpose(transposed);
  return transposed;
}

// A matrix with a NaN determinant is taken as singular.
bool VRELMath3x3Matrixf::Inverse(VRELMath3x3Matrixf& out) const noexcept {
  if (IsIsometry()) {
    Transpose(out);
    return true;
  }
  float const determinant = Determinant();
  if (!(std::fabs(determinant) > kTolerance)) return false;
  float const r = 1.0F / determinant;
  if (IsScaling()) {
    out = Transpose() * static_cast<float>(std::pow(static_cast<double>(std::fabs(r)), kTwoThirds));
    return true;
  }
  float const* const c = coefficient;
  out.SetCoef((c[4] * c[8] - c[5] * c[7]) * r, (c[2] * c[7] - c[1] * c[8]) * r, (c[1] * c[5] - c[2] * c[4]) * r,
              (c[5] * c[6] - c[3] * c[8]) * r, (c[0] * c[8] - c[2] * c[6]) * r, (c[2] * c[3] - c[0] * c[5]) * r,
              (c[3] * c[7] - c[4] * c[6]) * r, (c[1] * c[6] - c[0] * c[7]) * r, (c[0] * c[4] - c[1] * c[3]) * r);
  return true;
}

VRELMath3x3Matrixf VRELMath3x3Matrixf::Inverse() const noexcept {
  VRELMath3x3Matrixf inverse;
  Inverse(inverse);
  return inverse;
}

VRELMath3x3Matrixf operator*(VRELMath3x3Matrixf const& matrix, float s) noexcept {
  VRELMath3x3Matrixf multiple(matrix);
  for (float& value : multiple.coefficient) value *= s;
  multiple.type = matrix.TypeOfMultiple(s);
  return multiple;
}

VRELMath3x3Matrixf operator*(float s, VRELMath3x3Matrixf const& matrix) noexcept {
  return matrix * s;
}

VRELMath3x3Matrixf operator/(VRELMath3x3Matrixf const& matrix, float s) noexcept {
  VRELMath3x3Matrixf quotient(matrix);
  for (float& value : quotient.coefficient) value /= s;
  quotient.type = matrix.TypeOfMultiple(s);
  return quotient;
}

VRELMath3x3Matrixf operator*(VRELMath3x3Matrixf const& a, VRELMath3x3Matrixf const& b) noexcept {
  VRELMath3x3Matrixf product;
  for (int i = 0; i < 9; i += 3) {
    float const* const row = a.coefficient + i;
    for (int j = 0; j < 3; ++j) {
      product.coefficient[i + j] =
          row[0] * b.coefficient[j] + row[1] * b.coefficient[j + 3] + row[2] * b.coefficient[j + 6];
    }
  }
  product.type = std::clamp(a.type * b.type, -2, 2);
  return product;
}

VRELVectorf operator*(VRELMath3x3Matrixf const& matrix, VRELVectorf const& vector) noexcept {
  float const* const c = matrix.coefficient;
  return VRELVectorf(VRELVectorf(c) * vector, VRELVectorf(c + 3) * vector, VRELVectorf(c + 6) * vector);
}

VRELMath3x3Matrixf operator+(VRELMath3x3Matrixf const& a, VRELMath3x3Matrixf const& b) noexcept {
  VRELMath3x3Matrixf sum(a);
  for (int i = 0; i < 9; ++i) sum.coefficient[i] += b.coefficient[i];
  PELTMathComputeType(sum);
  return sum;
}

VRELMath3x3Matrixf operator-(VRELMath3x3Matrixf const& a, VRELMath3x3Matrixf const& b) noexcept {
  VRELMath3x3Matrixf difference(a);
  for (int i = 0; i < 9; ++i) difference.coefficient[i] -= b.coefficient[i];
  PELTMathComputeType(difference);
  return difference;
}

int PELTMathComputeType(VRELMath3x3Matrixf& matrix) noexcept {
  matrix.type = matrix.ComputedType();
  return matrix.type;
}

// Returns the type of s times this matrix; 0 if s is NaN.
int VRELMath3x3Matrixf::TypeOfMultiple(float s) const noexcept {
  if (s == 1.0F) return type;
  if (s == -1.0F) return -type;
  if (s > 0.0F) return type > 0 ? 2 : -2;
  if (s < 0.0F) return type > 0 ? -2 : 2;
  return 0;
}

int VRELMath3x3Matrixf::ComputedType() const noexcept {
  VRELVectorf const columns[] = {Column(0), Column(1), Column(2)};
  for (int i = 0; i < 3; ++i) {
    if (std::fabs(columns[i] * columns[(i + 1) % 3]) > kTolerance) return 0;
  }
  float const norms[] = {columns[0].Norm(), columns[1].Norm(), columns[2].Norm()};
  float const determinant = Sarrus();
  if (std::fabs(determinant) < kTolerance) return 0;
  int const sign = determinant > 0.0F ? 1 : -1;
  auto const isUnit = [](float norm) { return std::fabs(norm - 1.0F) < kTolerance; };
  if (std::all_of(std::begin(norms), std::end(norms), isUnit)) return sign;
  double const k = std::pow(static_cast<double>(std::fabs(determinant)), kOneThird);
  auto const isScaled = [k](float norm) { return std::fabs(norm / k - 1.0) <= kTolerance; };
  if (std::all_of(std::begin(norms), std::end(norms), isScaled)) return 2 * sign;
  return 0;
}

VRELVectorf VRELMath3x3Matrixf::Column(int column) const noexcept {
  return VRELVectorf(coefficient[column], coefficient[column + 3], coefficient[column + 6]);
}

void VRELMath3x3Matrixf::SetColumn(int column, VRELVectorf const& values) noexcept {
  values.GetCoord(coefficient[column], coefficient[column + 3], coefficient[column + 6]);
  PELTMathComputeType(*this);
}

float VRELMath3x3Matrixf::Sarrus() const noexcept {
  float const* const c = coefficient;
  return c[0] * c[4] * c[8] + c[1] * c[5] * c[6] + c[2] * c[3] * c[7] - c[2] * c[4] * c[6] - c[0] * c[5] * c[7] -
         c[1] * c[3] * c[8];
}
