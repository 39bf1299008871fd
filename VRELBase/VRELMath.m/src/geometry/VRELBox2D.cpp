#include "VRELBox2D.h"

VRELBox2D::VRELBox2D(VRELPoint2D const& a, VRELPoint2D const& b) {
  VRELBox2D::Set(a, b);
}

VRELBox2D::~VRELBox2D() = default;
