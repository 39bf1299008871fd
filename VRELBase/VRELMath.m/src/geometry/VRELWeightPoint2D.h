// Point of 2 homogeneous coordinates and a weight.
#pragma once

#include "VRELExport.h"
#include "VRELPoint2D.h"
#include "VRELWeightPoint.h"

class VRELAffine2D;
class VRELMorph2D;

// Point of 2 homogeneous coordinates and a weight, for control points of rational curves and surfaces.
//
//   VRELWeightPoint2D const pole(VRELPoint2D(1.0, 2.0), 2.0, true);  // stores 2, 4 and the weight 2
//   VRELPoint2D const p = pole.GetCoords();        // 1, 2
//
// Compatibility: assignment sets the reference count of the left side to 0; use CopyFrom on a shared point.
class VREL_EXPORT VRELWeightPoint2D : public VRELWeightPointOf<VRELWeightPoint2D, VRELPoint2D> {
 public:
  // Create a point with zero coordinates and the weight 1 or `theWeight`.
  VRELWeightPoint2D() noexcept;
  explicit VRELWeightPoint2D(double theWeight) noexcept;
  // Creates a weight point from `point`. If `isUnweighted` is set, its coordinates are multiplied by the weight;
  // otherwise they are stored unchanged.
  VRELWeightPoint2D(VRELPoint2D const& point, double theWeight, bool isUnweighted) noexcept;
  VRELWeightPoint2D(VRELWeightPoint2D const& other) noexcept = default;
  VRELWeightPoint2D& operator=(VRELWeightPoint2D const& other) noexcept = default;
  ~VRELWeightPoint2D() override;

  // Replaces the stored coordinates p by A p. The weight does not change.
  virtual void Transform(VRELAffine2D const& affine);
  // Replaces the stored coordinates p by s (A p) + w t, or by s (A p) if `noTranslation` is set. The weight w does not
  // change. The flags of the morph decide which parts are applied, and not its numbers.
  virtual void Transform(VRELMorph2D const& morph, bool noTranslation);
};
