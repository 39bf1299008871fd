// Point and vector of 2 double coordinates.
#pragma once

#include <cstddef>

#include "VRELExport.h"
#include "detail/VRELPlainPoint.h"

class VRELAffine2D;
class VRELMorph2D;

// Point of 2 double coordinates, also used as a vector.
//
//   VRELPoint2D const p(3.0, 4.0);
//   VRELPoint2D const q = p.Normalize() * 2.0 + VRELPoint2D(1.0, 0.0);  // 2.2, 1.6
//   double const product = p * q;                                        // scalar product, 13.0
//
// Use it by value; allocate it and hold it in a VRELPoint2DHandle only to share it.
//
// Compatibility: assignment sets the reference count of the left side to 0; use CopyFrom on a shared point.
class VREL_EXPORT VRELPoint2D : public VRELPlainPoint<VRELPoint2D, 2> {
 public:
  // Creates a point with zero coordinates.
  VRELPoint2D() noexcept = default;
  VRELPoint2D(double x, double y) noexcept;
  VRELPoint2D(VRELPoint2D const& other) noexcept = default;
  VRELPoint2D& operator=(VRELPoint2D const& other) noexcept = default;
  ~VRELPoint2D() override;

  // Replaces p by A p.
  virtual void Transform(VRELAffine2D const& affine);
  // Replaces p by s (A p) + t, or by s (A p) if `noTranslation` is set. The flags of the morph decide which parts are
  // applied, and not its numbers.
  //
  // Inline: include VRELMorph2D.h, which defines it, to call it.
  VREL_EXPORT virtual inline void Transform(VRELMorph2D const& morph, bool noTranslation);

  // Transforms `count` points of an array in place, without a virtual call for each: the fastest way to transform many
  // points. Does nothing for null. Include VRELMorph2D.h to call it.
  static inline void TransformAll(VRELPoint2D* points, std::size_t count, VRELMorph2D const& morph,
                                  bool noTranslation) noexcept;
};
