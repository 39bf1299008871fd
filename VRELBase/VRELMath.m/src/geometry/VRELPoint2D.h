// The point, and the vector, of 2 double coordinates.
#pragma once

#include "VRELExport.h"
#include "detail/VRELPlainPoint.h"

class VRELAffine2D;
class VRELMorph2D;

//   VRELPoint2D const p(3.0, 4.0);
//   VRELPoint2D const q = p.Normalize() * 2.0 + VRELPoint2D(1.0, 0.0);  // 2.2, 1.6
//   double const product = p * q;                                        // the scalar product
class VREL_EXPORT VRELPoint2D : public VRELPlainPoint<VRELPoint2D, 2> {
 public:
  // Zeros.
  VRELPoint2D() noexcept = default;
  VRELPoint2D(double x, double y) noexcept;
  VRELPoint2D(VRELPoint2D const& other) noexcept = default;
  VRELPoint2D& operator=(VRELPoint2D const& other) noexcept = default;
  ~VRELPoint2D() override;

  // Replaces p by A p. Neither form can be overridden, so that a call is as fast as that of a plain function.
  virtual void Transform(VRELAffine2D const& affine) final;
  // Replaces p by s (A p) + t, or by s (A p). The flags of the morph, and not its numbers, tell what is applied.
  // Inline: include VRELMorph2D.h, which defines it, for a call.
  VREL_EXPORT virtual inline void Transform(VRELMorph2D const& morph, bool noTranslation) final;
};
