#include "VRELVectorf.h"

#include <cmath>

#include "Gk_Def.h"
#include "VRELDirectionf.h"
#include "VRELNormalizef.h"

VRELVectorf::VRELVectorf(float const* coordinates) noexcept : VRELVectorf() {
  if (coordinates != nullptr) SetCoord(coordinates[0], coordinates[1], coordinates[2]);
}

VRELVectorf::VRELVectorf(VRELDirectionf const& direction) noexcept
    : VRELVectorf(direction.X(), direction.Y(), direction.Z()) {}

void VRELVectorf::GetCoord(float& outX, float& outY, float& outZ) const noexcept {
  outX = x;
  outY = y;
  outZ = z;
}

void VRELVectorf::SetCoord(float newX, float newY, float newZ) noexcept {
  x = newX;
  y = newY;
  z = newZ;
}

float VRELVectorf::Norm() const noexcept {
  return VRELSqrtf(x * x + y * y + z * z);
}

void VRELVectorf::Normalize() noexcept {
  vrelNormalizef(x, y, z);
}

double VRELVectorf::AngleTo(VRELVectorf const& other) const noexcept {
  if (Norm() <= kZeroLengthf || other.Norm() <= kZeroLengthf) return 0.0;
  double const sine = (*this ^ other).Norm();
  double const cosine = *this * other;
  return std::atan2(sine, cosine);
}

double VRELVectorf::AngleTo(VRELVectorf const& other, VRELVectorf const& reference) const noexcept {
  if (Norm() <= kZeroLengthf || other.Norm() <= kZeroLengthf) return 0.0;
  double const angle = AngleTo(other);
  return (*this ^ other) * reference < 0.0F ? VREL2PI - angle : angle;
}
