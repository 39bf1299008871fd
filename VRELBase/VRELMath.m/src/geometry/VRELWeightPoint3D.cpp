#include "VRELWeightPoint3D.h"

#include "VRELMorph3D.h"
#include "detail/VRELApplyMorph.h"

VRELWeightPoint3D::VRELWeightPoint3D() noexcept : VRELWeightPoint3D(1.0) {}

VRELWeightPoint3D::VRELWeightPoint3D(double theWeight) noexcept : VRELWeightPointOf(3, theWeight) {}

VRELWeightPoint3D::VRELWeightPoint3D(VRELPoint3D const& point, double theWeight, bool isUnweighted) noexcept
    : VRELWeightPointOf(point, theWeight, isUnweighted) {}

VRELWeightPoint3D::~VRELWeightPoint3D() = default;

void VRELWeightPoint3D::Transform(VRELAffine3D const& affine) {
  vrelApplyAffine<3>(affine, ChangeCoordinates());
}

void VRELWeightPoint3D::Transform(VRELMorph3D const& morph, bool noTranslation) {
  vrelApplyMorph<3>(morph, noTranslation, GetWeight(), ChangeCoordinates());
}
