// Transformation of 2D points.
#pragma once

#include "VRELAffine2D.h"
#include "VRELExport.h"
#include "VRELPoint2D.h"
#include "detail/VRELApplyMorph.h"
#include "detail/VRELMorphOf.h"

// A morph has no virtual destructor, so that the slots of its virtual table keep their order.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Transformation p' = s (A p) + t of 2D points.
//
//   VRELMorph2D const twice(2.0);
//   VRELMorph2D const shift(VRELPoint2D(1.0, 0.0));
//   VRELPoint2D p(3.0, 4.0);
//   p.Transform(twice.multiply(shift), false);  // shift, then scale: 8, 8
//
// Compatibility: differs from VRELMorph3D in the order of composition, and in setScale, which also scales the
// translation.
class VREL_EXPORT VRELMorph2D : public VRELMorphOf<VRELMorph2D, VRELAffine2D, VRELPoint2D> {
 public:
  // Creates the identity.
  VRELMorph2D() noexcept = default;
  // Creates a scaling.
  explicit VRELMorph2D(double scale);
  // Creates a translation.
  explicit VRELMorph2D(VRELPoint2D const& translation) noexcept;
  VRELMorph2D(VRELAffine2D const& affine, VRELPoint2D const& translation, double scale);
  // Exists for symmetry with VRELMorph3D: there is no rotation about an axis in two dimensions. Polls for an abort and
  // always asserts.
  // Compatibility: the result contains the zero matrix and has no effect according to its flags.
  VRELMorph2D(VRELPoint2D const& axis, double angle);
  VRELMorph2D(VRELMorph2D const& other) noexcept = default;
  VRELMorph2D& operator=(VRELMorph2D const& other) noexcept = default;

  // Multiplies scale and translation by `factor`. A resulting scale of 1 within Gk_Def::FuzzReal has no effect.
  void setScale(double factor) override;

  // Sets `out` to the morph that applies `other` first and then this one.
  void Multiply(VRELMorph const& other, VRELMorph& out) const override;
};

#pragma GCC diagnostic pop

inline void VRELPoint2D::Transform(VRELMorph2D const& morph, bool noTranslation) {
  vrelApplyMorph<2>(morph, noTranslation, 1.0, ChangeCoordinates());
}

inline void VRELPoint2D::TransformAll(VRELPoint2D* points, std::size_t count, VRELMorph2D const& morph,
                                      bool noTranslation) noexcept {
  if (points == nullptr) return;
  for (std::size_t i = 0; i < count; ++i) vrelApplyMorph<2>(morph, noTranslation, 1.0, points[i].ChangeCoordinates());
}
