// The matrix of a 3D morph.
#pragma once

#include "VRELAffine.h"
#include "VRELExport.h"

class VRELPoint3D;

class VREL_EXPORT VRELAffine3D : public VRELAffine {
 public:
  // The zero matrix.
  VRELAffine3D() noexcept;
  VRELAffine3D(VRELAffine3D const& other) noexcept = default;
  VRELAffine3D& operator=(VRELAffine3D const& other) noexcept = default;
  ~VRELAffine3D() override;

  using VRELAffine::SetColumn;
  // The column becomes the coordinates of the point.
  void SetColumn(int column, VRELPoint3D const& point);
};
