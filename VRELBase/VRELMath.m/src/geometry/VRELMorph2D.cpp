#include "VRELMorph2D.h"

#include "Gk_ErrMgr.h"

VRELMorph2D::VRELMorph2D(double theScale) : VRELMorphOf(theScale) {}

VRELMorph2D::VRELMorph2D(VRELPoint2D const& theTranslation) noexcept : VRELMorphOf(theTranslation) {}

VRELMorph2D::VRELMorph2D(VRELAffine2D const& theAffine, VRELPoint2D const& theTranslation, double theScale)
    : VRELMorphOf(theAffine, theTranslation, theScale) {}

VRELMorph2D::VRELMorph2D(VRELPoint2D const& /*axis*/, double /*angle*/) {
  Gk_ErrMgr::checkAbort();
  Gk_ErrMgr::doAssert(__FILE__, __LINE__);
  affinePart.Initialize(0.0);
}

void VRELMorph2D::setScale(double factor) {
  translationPart *= factor;
  scale *= factor;
  unitScale = Gk_Func::equal(scale, 1.0, Gk_Def::FuzzReal);
}

// Compatibility: composes in the opposite order of VRELMorph3D.
void VRELMorph2D::Multiply(VRELMorph const& other, VRELMorph& out) const {
  auto const* const first = dynamic_cast<VRELMorph2D const*>(&other);
  auto* const target = dynamic_cast<VRELMorph2D*>(&out);
  if (first != nullptr && target != nullptr) target->Compose(*first, *this);
}
