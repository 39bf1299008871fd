// Point of 3 homogeneous coordinates and a weight.
#pragma once

#include "VRELExport.h"
#include "VRELPoint3D.h"
#include "VRELWeightPoint.h"

class VRELAffine3D;
class VRELMorph3D;

// Point of 3 homogeneous coordinates and a weight, for control points of rational curves and surfaces.
//
//   VRELWeightPoint3D const pole(VRELPoint3D(1.0, 2.0, 3.0), 2.0, true);  // stores 2, 4, 6 and the weight 2
//   VRELPoint3D const p = pole.GetCoords();        // 1, 2, 3
//
// Compatibility: assignment sets the reference count of the left side to 0; use CopyFrom on a shared point.
class VREL_EXPORT VRELWeightPoint3D : public VRELWeightPointOf<VRELWeightPoint3D, VRELPoint3D> {
 public:
  // Create a point with zero coordinates and the weight 1 or `theWeight`.
  VRELWeightPoint3D() noexcept;
  explicit VRELWeightPoint3D(double theWeight) noexcept;
  // Creates a weight point from `point`. If `isUnweighted` is set, its coordinates are multiplied by the weight;
  // otherwise they are stored unchanged.
  VRELWeightPoint3D(VRELPoint3D const& point, double theWeight, bool isUnweighted) noexcept;
  VRELWeightPoint3D(VRELWeightPoint3D const& other) noexcept = default;
  VRELWeightPoint3D& operator=(VRELWeightPoint3D const& other) noexcept = default;
  ~VRELWeightPoint3D() override;

  // Replaces the stored coordinates p by A p. The weight does not change.
  virtual void Transform(VRELAffine3D const& affine);
  // Replaces the stored coordinates p by s (A p) + w t, or by s (A p) if `noTranslation` is set. The weight w does not
  // change. The flags of the morph decide which parts are applied, and not its numbers.
  virtual void Transform(VRELMorph3D const& morph, bool noTranslation);
};
