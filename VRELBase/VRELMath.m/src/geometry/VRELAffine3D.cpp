#include "VRELAffine3D.h"

#include "VRELPoint3D.h"

VRELAffine3D::VRELAffine3D() noexcept : VRELAffine(3) {}

VRELAffine3D::~VRELAffine3D() = default;

void VRELAffine3D::SetColumn(int column, VRELPoint3D const& point) {
  SetColumn(column, point.GetCoordinates());
}
