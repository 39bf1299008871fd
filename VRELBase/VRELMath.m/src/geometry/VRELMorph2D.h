// The transformation of 2D points.
#pragma once

#include "VRELAffine2D.h"
#include "detail/VRELApplyMorph.h"
#include "VRELExport.h"
#include "detail/VRELMorphOf.h"
#include "VRELPoint2D.h"

//   VRELMorph2D const twice(2.0);
//   VRELMorph2D const shift(VRELPoint2D(1.0, 0.0));
//   VRELPoint2D p(3.0, 4.0);
//   p.Transform(twice.multiply(shift), false);  // shifted, then doubled: 8, 8
//
// It differs from VRELMorph3D in two ways, which are promised: the order of composition, and setScale, which scales the
// translation too.
class VREL_EXPORT VRELMorph2D : public VRELMorphOf<VRELMorph2D, VRELAffine2D, VRELPoint2D> {
 public:
  // The identity.
  VRELMorph2D() noexcept = default;
  // A scale alone.
  explicit VRELMorph2D(double scale);
  // A translation alone.
  explicit VRELMorph2D(VRELPoint2D const& translation) noexcept;
  VRELMorph2D(VRELAffine2D const& affine, VRELPoint2D const& translation, double scale);
  // There is no rotation about an axis in two dimensions: a presumption that always fails, after a poll for an abort.
  // That the result holds the zero matrix, and has no effect by its flags, is promised.
  VRELMorph2D(VRELPoint2D const& axis, double angle);
  VRELMorph2D(VRELMorph2D const& other) noexcept = default;
  VRELMorph2D& operator=(VRELMorph2D const& other) noexcept = default;

  // Multiplies scale and translation. A scale that is then 1 within Gk_Def::FuzzReal has no effect.
  void setScale(double factor) override;

  // Makes out the morph that runs `other` first and then this.
  void Multiply(VRELMorph const& other, VRELMorph& out) const override;
};

inline void VRELPoint2D::Transform(VRELMorph2D const& morph, bool noTranslation) {
  vrelApplyMorph<2>(morph, noTranslation, 1.0, ChangeCoordinates());
}
