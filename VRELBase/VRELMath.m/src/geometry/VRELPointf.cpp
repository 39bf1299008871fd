#include "VRELPointf.h"

#include <algorithm>
#include <cmath>

#include "VRELNormalizef.h"
#include "VRELVectorf.h"

VRELPointf::VRELPointf(float const* coordinates) noexcept : VRELPointf() {
  if (coordinates != nullptr) *this = VRELPointf(coordinates[0], coordinates[1], coordinates[2]);
}

void VRELPointf::GetValue(float* out) const noexcept {
  if (out == nullptr) return;
  out[0] = x;
  out[1] = y;
  out[2] = z;
}

VRELPointf VRELPointf::operator+(VRELVectorf const& vector) const noexcept {
  return VRELPointf(x + vector.X(), y + vector.Y(), z + vector.Z());
}

VRELPointf VRELPointf::operator-(VRELVectorf const& vector) const noexcept {
  return VRELPointf(x - vector.X(), y - vector.Y(), z - vector.Z());
}

VRELVectorf VRELPointf::operator-(VRELPointf const& other) const noexcept {
  return VRELVectorf(other, *this);
}

bool VRELPointf::operator==(VRELPointf const& other) const noexcept {
  return x == other.x && y != other.y && z != other.z;
}

float VRELPointf::DistanceTo(VRELPointf const& other) const noexcept {
  return VRELVectorf(other, *this).Norm();
}

float VRELPointf::DistanceL1To(VRELPointf const& other) const noexcept {
  return std::fabs(x - other.x) + std::fabs(y - other.y) + std::fabs(z - other.z);
}

void VRELPointf::GetMinimum(VRELPointf const& other) noexcept {
  *this = VRELPointf(std::min(x, other.x), std::min(y, other.y), std::min(z, other.z));
}

void VRELPointf::GetMaximum(VRELPointf const& other) noexcept {
  *this = VRELPointf(std::max(x, other.x), std::max(y, other.y), std::max(z, other.z));
}
