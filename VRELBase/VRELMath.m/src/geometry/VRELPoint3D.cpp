#include "VRELPoint3D.h"

#include <algorithm>

#include "VRELMorph3D.h"
#include "detail/VRELApplyMorph.h"

VRELPoint3D::VRELPoint3D(double x, double y, double z) noexcept {
  double* const stored = ChangeCoordinates();
  stored[0] = x;
  stored[1] = y;
  stored[2] = z;
}

VRELPoint3D::VRELPoint3D(double const* coordinates) noexcept {
  if (coordinates != nullptr) std::copy_n(coordinates, 3, ChangeCoordinates());
}

VRELPoint3D::~VRELPoint3D() = default;

VRELPoint3D VRELPoint3D::VectorProduct(VRELPoint3D const& a, VRELPoint3D const& b) noexcept {
  double const* const p = a.GetCoordinates();
  double const* const q = b.GetCoordinates();
  return VRELPoint3D(p[1] * q[2] - p[2] * q[1], p[2] * q[0] - p[0] * q[2], p[0] * q[1] - p[1] * q[0]);
}

void VRELPoint3D::Transform(VRELAffine3D const& affine) {
  vrelApplyAffine<3>(affine, ChangeCoordinates());
}

void VRELGetDoublesFromVRELPoint3D(VRELPoint3D const& point, double* out) noexcept {
  if (out != nullptr) std::copy_n(point.GetCoordinates(), 3, out);
}
