#include "VRELBox3D.h"

VRELBox3D::VRELBox3D(VRELPoint3D const& a, VRELPoint3D const& b) {
  VRELBox3D::Set(a, b);
}

VRELBox3D::~VRELBox3D() = default;
