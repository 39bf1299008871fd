// Matrix of a 3D morph.
#pragma once

#include "VRELAffine.h"
#include "VRELExport.h"

class VRELPoint3D;

// 3 by 3 matrix of doubles; see VRELAffine.
class VREL_EXPORT VRELAffine3D : public VRELAffine {
 public:
  // Creates the zero matrix.
  VRELAffine3D() noexcept;
  VRELAffine3D(VRELAffine3D const& other) noexcept = default;
  VRELAffine3D& operator=(VRELAffine3D const& other) noexcept = default;
  ~VRELAffine3D() override;

  using VRELAffine::SetColumn;
  // Sets the column to the coordinates of `point`.
  void SetColumn(int column, VRELPoint3D const& point);
};
