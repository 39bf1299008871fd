// Transformation of 3D points.
#pragma once

#include "VRELAffine3D.h"
#include "VRELExport.h"
#include "VRELPoint3D.h"
#include "detail/VRELApplyMorph.h"
#include "detail/VRELMorphOf.h"

class VRELAssemblyComponentTransform;

// A morph has no virtual destructor, so that the slots of its virtual table keep their order.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Transformation p' = s (A p) + t of 3D points.
//
//   VRELMorph3D const rotation(VRELPoint3D(0.0, 0.0, 1.0), VRELPIBY2);
//   VRELMorph3D const shift(VRELPoint3D(1.0, 0.0, 0.0));
//   VRELPoint3D p(1.0, 0.0, 0.0);
//   p.Transform(rotation.multiply(shift), false);  // rotate, then shift: 1, 1, 0
//
// Compatibility: differs from VRELMorph2D in the order of composition, and in setScale, which does not scale the
// translation.
class VREL_EXPORT VRELMorph3D : public VRELMorphOf<VRELMorph3D, VRELAffine3D, VRELPoint3D> {
 public:
  // Creates the identity.
  VRELMorph3D() noexcept = default;
  // Creates a scaling.
  explicit VRELMorph3D(double scale);
  // Creates a translation.
  explicit VRELMorph3D(VRELPoint3D const& translation) noexcept;
  VRELMorph3D(VRELAffine3D const& affine, VRELPoint3D const& translation, double scale);
  // Creates the right-handed rotation by an angle in radians about the axis through the origin. The axis can have any
  // length above 0; for a zero axis, the matrix is the cosine of the angle times the identity.
  VRELMorph3D(VRELPoint3D const& axis, double angle);
  // Copies matrix, translation and scale of the placement of a component.
  // Compatibility: the flags are not set, so that the morph does not change points before fixMorphFlags() is called.
  explicit VRELMorph3D(VRELAssemblyComponentTransform const& placement);
  VRELMorph3D(VRELMorph3D const& other) noexcept = default;
  VRELMorph3D& operator=(VRELMorph3D const& other) noexcept = default;

  // Multiplies the scale by `factor`. A resulting scale of 1 within Gk_Def::FuzzReal has no effect.
  void setScale(double factor) override;
  // If the scale has an effect according to its flag, multiplies the translation by the scale and sets the scale to 1.
  void FixScaleFactor() noexcept;

  // Sets `out` to the morph that applies this one first and then `other`.
  void Multiply(VRELMorph const& other, VRELMorph& out) const override;
};

#pragma GCC diagnostic pop

inline void VRELPoint3D::Transform(VRELMorph3D const& morph, bool noTranslation) {
  vrelApplyMorph<3>(morph, noTranslation, 1.0, ChangeCoordinates());
}

inline void VRELPoint3D::TransformAll(VRELPoint3D* points, std::size_t count, VRELMorph3D const& morph,
                                      bool noTranslation) noexcept {
  if (points == nullptr) return;
  for (std::size_t i = 0; i < count; ++i) vrelApplyMorph<3>(morph, noTranslation, 1.0, points[i].ChangeCoordinates());
}

// Transforms three doubles in place, like VRELPoint3D::Transform.
VREL_EXPORT void Transform(double& x, double& y, double& z, VRELMorph3D const& morph, bool noTranslation);
