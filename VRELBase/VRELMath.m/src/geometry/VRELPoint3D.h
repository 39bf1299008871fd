// The point, and the vector, of 3 double coordinates.
#pragma once

#include "VRELExport.h"
#include "detail/VRELPlainPoint.h"

class VRELAffine3D;
class VRELMorph3D;

//   VRELPoint3D p(1.0, 0.0, 0.0);
//   p.Transform(VRELMorph3D(VRELPoint3D(0.0, 0.0, 1.0), VRELPIBY2), false);  // now 0, 1, 0
//   double const product = p * VRELPoint3D(1.0, 2.0, 3.0);                    // the scalar product
class VREL_EXPORT VRELPoint3D : public VRELPlainPoint<VRELPoint3D, 3> {
 public:
  // Zeros.
  VRELPoint3D() noexcept = default;
  VRELPoint3D(double x, double y, double z) noexcept;
  // From three doubles; null gives zeros.
  explicit VRELPoint3D(double const* coordinates) noexcept;
  VRELPoint3D(VRELPoint3D const& other) noexcept = default;
  VRELPoint3D& operator=(VRELPoint3D const& other) noexcept = default;
  ~VRELPoint3D() override;

  // The cross product.
  static VRELPoint3D VectorProduct(VRELPoint3D const& a, VRELPoint3D const& b) noexcept;

  // Replaces p by A p. Neither form can be overridden, so that a call is as fast as that of a plain function.
  virtual void Transform(VRELAffine3D const& affine) final;
  // Replaces p by s (A p) + t, or by s (A p). The flags of the morph, and not its numbers, tell what is applied.
  // Inline: include VRELMorph3D.h, which defines it, for a call.
  VREL_EXPORT virtual inline void Transform(VRELMorph3D const& morph, bool noTranslation) final;
};

// Copies the three coordinates out; does nothing for null.
VREL_EXPORT void VRELGetDoublesFromVRELPoint3D(VRELPoint3D const& point, double* out) noexcept;
