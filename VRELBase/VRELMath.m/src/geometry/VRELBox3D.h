// The box along the axes in 3D.
#pragma once

#include "detail/VRELBoxOf.h"
#include "VRELExport.h"
#include "VRELMorph3D.h"
#include "VRELPoint3D.h"

//   VRELBox3D bounds;
//   for (VRELPoint3D const& each : points) bounds.ExtendTo(each);
//   double const size = bounds.diagonal();
class VREL_EXPORT VRELBox3D : public VRELBoxOf<VRELBox3D, VRELPoint3D, VRELMorph3D, 3> {
 public:
  // Empty.
  VRELBox3D() noexcept = default;
  // Between two opposite corners.
  VRELBox3D(VRELPoint3D const& a, VRELPoint3D const& b);
  VRELBox3D(VRELBox3D const&) noexcept = default;
  VRELBox3D& operator=(VRELBox3D const&) noexcept = default;
  ~VRELBox3D() override;
};
