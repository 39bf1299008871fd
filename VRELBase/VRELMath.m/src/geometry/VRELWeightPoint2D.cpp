#include "VRELWeightPoint2D.h"

#include "VRELMorph2D.h"
#include "detail/VRELApplyMorph.h"

VRELWeightPoint2D::VRELWeightPoint2D() noexcept : VRELWeightPoint2D(1.0) {}

VRELWeightPoint2D::VRELWeightPoint2D(double theWeight) noexcept : VRELWeightPointOf(2, theWeight) {}

VRELWeightPoint2D::VRELWeightPoint2D(VRELPoint2D const& point, double theWeight, bool isUnweighted) noexcept
    : VRELWeightPointOf(point, theWeight, isUnweighted) {}

VRELWeightPoint2D::~VRELWeightPoint2D() = default;

void VRELWeightPoint2D::Transform(VRELAffine2D const& affine) {
  vrelApplyAffine<2>(affine, ChangeCoordinates());
}

void VRELWeightPoint2D::Transform(VRELMorph2D const& morph, bool noTranslation) {
  vrelApplyMorph<2>(morph, noTranslation, GetWeight(), ChangeCoordinates());
}
