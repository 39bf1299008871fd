// The point of 2 homogeneous coordinates and a weight.
#pragma once

#include "VRELExport.h"
#include "VRELPoint2D.h"
#include "VRELWeightPoint.h"

class VRELAffine2D;
class VRELMorph2D;

//   VRELWeightPoint2D const pole(VRELPoint2D(1.0, 2.0), 2.0, true);  // stores 2, 4 and the weight 2
//   VRELPoint2D const p = pole.GetCoords();        // 1, 2
class VREL_EXPORT VRELWeightPoint2D : public VRELWeightPointOf<VRELWeightPoint2D, VRELPoint2D> {
 public:
  // Zeros; the weight is 1 if none is given.
  VRELWeightPoint2D() noexcept;
  explicit VRELWeightPoint2D(double theWeight) noexcept;
  // Stores the coordinates of the point multiplied by the weight if they are unweighted, as they are otherwise.
  VRELWeightPoint2D(VRELPoint2D const& point, double theWeight, bool isUnweighted) noexcept;
  VRELWeightPoint2D(VRELWeightPoint2D const& other) noexcept = default;
  VRELWeightPoint2D& operator=(VRELWeightPoint2D const& other) noexcept = default;
  ~VRELWeightPoint2D() override;

  // Replaces the stored coordinates p by A p. The weight stays.
  virtual void Transform(VRELAffine2D const& affine);
  // Replaces the stored coordinates p by s (A p) + w t, or by s (A p); the weight w stays. The flags of the morph, and
  // not its numbers, tell what is applied.
  virtual void Transform(VRELMorph2D const& morph, bool noTranslation);
};
