// The matrix of a 2D morph.
#pragma once

#include "VRELAffine.h"
#include "VRELExport.h"

class VRELPoint2D;

class VREL_EXPORT VRELAffine2D : public VRELAffine {
 public:
  // The zero matrix.
  VRELAffine2D() noexcept;
  VRELAffine2D(VRELAffine2D const& other) noexcept = default;
  VRELAffine2D& operator=(VRELAffine2D const& other) noexcept = default;
  ~VRELAffine2D() override;

  using VRELAffine::SetColumn;
  // The column becomes the coordinates of the point.
  void SetColumn(int column, VRELPoint2D const& point);
};
