// The transformation of 3D points.
#pragma once

#include "VRELAffine3D.h"
#include "detail/VRELApplyMorph.h"
#include "VRELExport.h"
#include "detail/VRELMorphOf.h"
#include "VRELPoint3D.h"

class VRELAssemblyComponentTransform;

//   VRELMorph3D const turn(VRELPoint3D(0.0, 0.0, 1.0), VRELPIBY2);
//   VRELMorph3D const shift(VRELPoint3D(1.0, 0.0, 0.0));
//   VRELPoint3D p(1.0, 0.0, 0.0);
//   p.Transform(turn.multiply(shift), false);  // turned, then shifted: 1, 1, 0
//
// It differs from VRELMorph2D in two ways, which are promised: the order of composition, and setScale, which leaves the
// translation alone.
class VREL_EXPORT VRELMorph3D : public VRELMorphOf<VRELMorph3D, VRELAffine3D, VRELPoint3D> {
 public:
  // The identity.
  VRELMorph3D() noexcept = default;
  // A scale alone.
  explicit VRELMorph3D(double scale);
  // A translation alone.
  explicit VRELMorph3D(VRELPoint3D const& translation) noexcept;
  VRELMorph3D(VRELAffine3D const& affine, VRELPoint3D const& translation, double scale);
  // The right-handed rotation by an angle in radians about the axis through the origin, of any length above 0. A zero
  // axis gives the cosine on the diagonal and nothing else.
  VRELMorph3D(VRELPoint3D const& axis, double angle);
  // The placement of a component. That it has no effect on points, whatever its numbers are, until fixMorphFlags()
  // runs, is promised.
  explicit VRELMorph3D(VRELAssemblyComponentTransform const& placement);
  VRELMorph3D(VRELMorph3D const& other) noexcept = default;
  VRELMorph3D& operator=(VRELMorph3D const& other) noexcept = default;

  // Multiplies the scale. One that is then 1 within Gk_Def::FuzzReal has no effect.
  void setScale(double factor) override;
  // Where the scale has an effect, by its flag: multiplies the translation by it and makes it 1.
  void FixScaleFactor() noexcept;

  // Makes out the morph that runs this first and then `other`.
  void Multiply(VRELMorph const& other, VRELMorph& out) const override;
};

inline void VRELPoint3D::Transform(VRELMorph3D const& morph, bool noTranslation) {
  vrelApplyMorph<3>(morph, noTranslation, 1.0, ChangeCoordinates());
}

// VRELPoint3D::Transform for three doubles, in place.
VREL_EXPORT void Transform(double& x, double& y, double& z, VRELMorph3D const& morph, bool noTranslation);
