#include "VRELAffine2D.h"

#include "VRELPoint2D.h"

VRELAffine2D::VRELAffine2D() noexcept : VRELAffine(2) {}

VRELAffine2D::~VRELAffine2D() = default;

void VRELAffine2D::SetColumn(int column, VRELPoint2D const& point) {
  SetColumn(column, point.GetCoordinates());
}
