#include "VRELPoint2D.h"

#include "VRELMorph2D.h"
#include "detail/VRELApplyMorph.h"

VRELPoint2D::VRELPoint2D(double x, double y) noexcept {
  double* const stored = ChangeCoordinates();
  stored[0] = x;
  stored[1] = y;
}

VRELPoint2D::~VRELPoint2D() = default;

void VRELPoint2D::Transform(VRELAffine2D const& affine) {
  vrelApplyAffine<2>(affine, ChangeCoordinates());
}
