// Point and vector of 3 double coordinates.
#pragma once

#include <cstddef>

#include "VRELExport.h"
#include "detail/VRELPlainPoint.h"

class VRELAffine3D;
class VRELMorph3D;

// Point of 3 double coordinates, also used as a vector.
//
//   VRELPoint3D p(1.0, 0.0, 0.0);
//   p.Transform(VRELMorph3D(VRELPoint3D(0.0, 0.0, 1.0), VRELPIBY2), false);  // now 0, 1, 0
//   double const product = p * VRELPoint3D(1.0, 2.0, 3.0);                    // scalar product, 2.0
//
// Use it by value; allocate it and hold it in a VRELPoint3DHandle only to share it.
//
// Compatibility: assignment sets the reference count of the left side to 0; use CopyFrom on a shared point.
class VREL_EXPORT VRELPoint3D : public VRELPlainPoint<VRELPoint3D, 3> {
 public:
  // Creates a point with zero coordinates.
  VRELPoint3D() noexcept = default;
  VRELPoint3D(double x, double y, double z) noexcept;
  // Reads three doubles; null creates a point with zero coordinates.
  explicit VRELPoint3D(double const* coordinates) noexcept;
  VRELPoint3D(VRELPoint3D const& other) noexcept = default;
  VRELPoint3D& operator=(VRELPoint3D const& other) noexcept = default;
  ~VRELPoint3D() override;

  // Returns the cross product.
  static VRELPoint3D VectorProduct(VRELPoint3D const& a, VRELPoint3D const& b) noexcept;

  // Replaces p by A p.
  virtual void Transform(VRELAffine3D const& affine);
  // Replaces p by s (A p) + t, or by s (A p) if `noTranslation` is set. The flags of the morph decide which parts are
  // applied, and not its numbers.
  //
  // Inline: include VRELMorph3D.h, which defines it, to call it.
  VREL_EXPORT virtual inline void Transform(VRELMorph3D const& morph, bool noTranslation);

  // Transforms `count` points of an array in place, without a virtual call for each: the fastest way to transform many
  // points. Does nothing for null. Include VRELMorph3D.h to call it.
  static inline void TransformAll(VRELPoint3D* points, std::size_t count, VRELMorph3D const& morph,
                                  bool noTranslation) noexcept;
};

// Copies the three coordinates to `out`; does nothing if `out` is null.
VREL_EXPORT void VRELGetDoublesFromVRELPoint3D(VRELPoint3D const& point, double* out) noexcept;
