// Axis-aligned box in 3D.
#pragma once

#include "VRELExport.h"
#include "VRELMorph3D.h"
#include "VRELPoint3D.h"
#include "detail/VRELBoxOf.h"

// Axis-aligned box in 3D.
//
//   VRELBox3D bounds;
//   for (VRELPoint3D const& each : points) bounds.ExtendTo(each);
//   bounds.ExtendTo(points.data(), points.size());  // the same for an array, faster
//   double const size = bounds.diagonal();
//
// A value class; the operations are those of VRELBoxOf.
class VREL_EXPORT VRELBox3D : public VRELBoxOf<VRELBox3D, VRELPoint3D, VRELMorph3D, 3> {
 public:
  // Creates an empty box.
  VRELBox3D() noexcept = default;
  // Creates the box with the opposite corners `a` and `b`.
  VRELBox3D(VRELPoint3D const& a, VRELPoint3D const& b);
  VRELBox3D(VRELBox3D const&) noexcept = default;
  VRELBox3D& operator=(VRELBox3D const&) noexcept = default;
  ~VRELBox3D() override;
};
