// Axis-aligned box in 2D.
#pragma once

#include "VRELExport.h"
#include "VRELMorph2D.h"
#include "VRELPoint2D.h"
#include "detail/VRELBoxOf.h"

// Axis-aligned box in 2D.
//
//   VRELBox2D sheet(VRELPoint2D(0.0, 0.0), VRELPoint2D(2.0, 1.0));
//   sheet.ExtendTo(VRELPoint2D(3.0, 0.5));  // now 0, 0 to 3, 1
//
// A value class; the operations are those of VRELBoxOf.
class VREL_EXPORT VRELBox2D : public VRELBoxOf<VRELBox2D, VRELPoint2D, VRELMorph2D, 2> {
 public:
  // Creates an empty box.
  VRELBox2D() noexcept = default;
  // Creates the box with the opposite corners `a` and `b`.
  VRELBox2D(VRELPoint2D const& a, VRELPoint2D const& b);
  VRELBox2D(VRELBox2D const&) noexcept = default;
  VRELBox2D& operator=(VRELBox2D const&) noexcept = default;
  ~VRELBox2D() override;
};
