#include "VRELAssemblyComponentTransform.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kIdentity[12] = {1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0};
constexpr double kIdentityTolerance = 1e-6;

}  // namespace

VRELAssemblyComponentTransform::VRELAssemblyComponentTransform() noexcept
    : VRELAssemblyComponentTransform(kIdentity, 1.0) {}

VRELAssemblyComponentTransform::VRELAssemblyComponentTransform(double const* theMatrix, double const& theScale) noexcept
    : determinant(0.0),
      scale(theMatrix != nullptr ? theScale : 1.0),
      determinantKnown(false),
      flagsKnown(false),
      valid(false),
      identity(false),
      mirror(false) {
  std::copy_n(theMatrix != nullptr ? theMatrix : kIdentity, 12, matrix);
}

VRELAssemblyComponentTransform::VRELAssemblyComponentTransform(VRELAssemblyComponentTransform const& other) noexcept
    : VRELAssemblyComponentTransform(other.matrix, other.scale) {}

VRELAssemblyComponentTransform::~VRELAssemblyComponentTransform() {
  ResetFlags();
}

VRINResult VRELAssemblyComponentTransform::Get(double* out) const {
  if (out == nullptr) return VREL_E_INVALID_ARGUMENT;
  std::copy_n(matrix, 12, out);
  return VREL_S_OK;
}

VRINResult VRELAssemblyComponentTransform::Set(double const* in) {
  if (in == nullptr) return VREL_E_INVALID_ARGUMENT;
  std::copy_n(in, 12, matrix);
  ResetFlags();
  return VREL_S_OK;
}

VRINResult VRELAssemblyComponentTransform::GetRotation(double* out) const {
  if (out == nullptr) return VREL_E_INVALID_ARGUMENT;
  std::copy_n(matrix, 9, out);
  return VREL_S_OK;
}

VRINResult VRELAssemblyComponentTransform::SetRotation(double const* in) {
  if (in == nullptr) return VREL_E_INVALID_ARGUMENT;
  std::copy_n(in, 9, matrix);
  ResetFlags();
  return VREL_S_OK;
}

VRINResult VRELAssemblyComponentTransform::GetTranslation(double* out) const {
  if (out == nullptr) return VREL_E_INVALID_ARGUMENT;
  std::copy_n(matrix + 9, 3, out);
  return VREL_S_OK;
}

VRINResult VRELAssemblyComponentTransform::SetTranslation(double const* in) {
  if (in == nullptr) return VREL_E_INVALID_ARGUMENT;
  std::copy_n(in, 3, matrix + 9);
  ResetFlags();
  return VREL_S_OK;
}

VRINResult VRELAssemblyComponentTransform::GetScale(double& out) const {
  out = scale;
  return VREL_S_OK;
}

VRINResult VRELAssemblyComponentTransform::SetScale(double value) {
  scale = value;
  return VREL_S_OK;
}

VRINResult VRELAssemblyComponentTransform::Get4x4ByColumn(float* out) const {
  if (out == nullptr) return VREL_E_INVALID_ARGUMENT;
  for (int c = 0; c < kColumns; ++c) {
    for (int r = 0; r < 3; ++r) out[4 * c + r] = static_cast<float>(matrix[3 * c + r]);
    out[4 * c + 3] = 0.0F;
  }
  out[15] = 1.0F;
  return VREL_S_OK;
}

VRINResult VRELAssemblyComponentTransform::Get4x4ByRow(float* out) const {
  if (out == nullptr) return VREL_E_INVALID_ARGUMENT;
  for (int r = 0; r < 3; ++r) {
    for (int c = 0; c < kColumns; ++c) out[4 * r + c] = static_cast<float>(matrix[3 * c + r]);
  }
  std::fill_n(out + 12, 3, 0.0F);
  out[15] = 1.0F;
  return VREL_S_OK;
}

VRINResult VRELAssemblyComponentTransform::Set4x4ByColumn(float const* in) {
  if (in == nullptr) return VREL_E_INVALID_ARGUMENT;
  for (int c = 0; c < kColumns; ++c) std::copy_n(in + 4 * c, 3, matrix + 3 * c);
  ResetFlags();
  return VREL_S_OK;
}

VRINResult VRELAssemblyComponentTransform::Set3x4ByRow(float const* in) {
  if (in == nullptr) return VREL_E_INVALID_ARGUMENT;
  for (int r = 0; r < 3; ++r) {
    for (int c = 0; c < kColumns; ++c) matrix[3 * c + r] = in[4 * r + c];
  }
  ResetFlags();
  return VREL_S_OK;
}

// Rule of Sarrus, evaluated in this order of terms.
VRINResult VRELAssemblyComponentTransform::GetDeterminant(double& out) const {
  if (!determinantKnown) {
    double const* const m = matrix;
    determinant = m[0] * m[4] * m[8] + m[3] * m[7] * m[2] + m[1] * m[5] * m[6] - m[2] * m[6] * m[4] -
                  m[0] * m[5] * m[7] - m[1] * m[3] * m[8];
    determinantKnown = true;
  }
  out = determinant;
  return VREL_S_OK;
}

bool VRELAssemblyComponentTransform::IsValid() const {
  SetFlags();
  return valid;
}

bool VRELAssemblyComponentTransform::IsMirrorTransform() const {
  SetFlags();
  return mirror;
}

bool VRELAssemblyComponentTransform::IsIdentityTransform() const {
  SetFlags();
  return identity;
}

VRINResult VRELAssemblyComponentTransform::ApplyRotation(float* point) const {
  if (point == nullptr) return VREL_E_INVALID_ARGUMENT;
  if (IsIdentityTransform()) return VREL_S_OK;
  double const x = point[0];
  double const y = point[1];
  double const z = point[2];
  for (int r = 0; r < 3; ++r) point[r] = static_cast<float>(Row(r, x, y, z));
  return VREL_S_OK;
}

VRINResult VRELAssemblyComponentTransform::ApplyTransform(float* point) const {
  if (point == nullptr) return VREL_E_INVALID_ARGUMENT;
  if (IsIdentityTransform()) return VREL_S_OK;
  double const x = point[0];
  double const y = point[1];
  double const z = point[2];
  for (int r = 0; r < 3; ++r) point[r] = static_cast<float>(Row(r, x, y, z) + matrix[9 + r]);
  return VREL_S_OK;
}

VRELAssemblyComponentTransform VRELAssemblyComponentTransform::operator*(
    VRELAssemblyComponentTransform const& other) const {
  VRELAssemblyComponentTransform product;
  for (int c = 0; c < kColumns; ++c) {
    double const* const column = other.matrix + 3 * c;
    double const bottom = c == 3 ? 1.0 : 0.0;
    for (int r = 0; r < 3; ++r) {
      product.matrix[3 * c + r] = Row(r, column[0], column[1], column[2]) + matrix[9 + r] * bottom;
    }
  }
  return product;
}

void VRELAssemblyComponentTransform::ResetFlags() noexcept {
  determinantKnown = false;
  flagsKnown = false;
}

void VRELAssemblyComponentTransform::SetFlags() const {
  if (flagsKnown) return;
  double value = 0.0;
  GetDeterminant(value);
  valid = value != 0.0;
  mirror = value < 0.0;
  identity = IsCloseToIdentity();
  flagsKnown = true;
}

bool VRELAssemblyComponentTransform::IsCloseToIdentity() const {
  for (int i = 0; i < 12; ++i) {
    // Negated, so that NaN is not close to the identity.
    if (!(std::fabs(matrix[i] - kIdentity[i]) < kIdentityTolerance)) return false;
  }
  return true;
}

// Multiplies a row of the linear part by a vector.
double VRELAssemblyComponentTransform::Row(int row, double x, double y, double z) const {
  return matrix[row] * x + matrix[row + 3] * y + matrix[row + 6] * z;
}
