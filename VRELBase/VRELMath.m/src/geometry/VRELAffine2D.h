// Matrix of a 2D morph.
#pragma once

#include "VRELAffine.h"
#include "VRELExport.h"

class VRELPoint2D;

// 2 by 2 matrix of doubles; see VRELAffine.
class VREL_EXPORT VRELAffine2D : public VRELAffine {
 public:
  // Creates the zero matrix.
  VRELAffine2D() noexcept;
  VRELAffine2D(VRELAffine2D const& other) noexcept = default;
  VRELAffine2D& operator=(VRELAffine2D const& other) noexcept = default;
  ~VRELAffine2D() override;

  using VRELAffine::SetColumn;
  // Sets the column to the coordinates of `point`.
  void SetColumn(int column, VRELPoint2D const& point);
};
