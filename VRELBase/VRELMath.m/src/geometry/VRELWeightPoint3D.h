// The point of 3 homogeneous coordinates and a weight.
#pragma once

#include "VRELExport.h"
#include "VRELPoint3D.h"
#include "VRELWeightPoint.h"

class VRELAffine3D;
class VRELMorph3D;

//   VRELWeightPoint3D const pole(VRELPoint3D(1.0, 2.0, 3.0), 2.0, true);  // stores 2, 4, 6 and the weight 2
//   VRELPoint3D const p = pole.GetCoords();        // 1, 2, 3
class VREL_EXPORT VRELWeightPoint3D : public VRELWeightPointOf<VRELWeightPoint3D, VRELPoint3D> {
 public:
  // Zeros; the weight is 1 if none is given.
  VRELWeightPoint3D() noexcept;
  explicit VRELWeightPoint3D(double theWeight) noexcept;
  // Stores the coordinates of the point multiplied by the weight if they are unweighted, as they are otherwise.
  VRELWeightPoint3D(VRELPoint3D const& point, double theWeight, bool isUnweighted) noexcept;
  VRELWeightPoint3D(VRELWeightPoint3D const& other) noexcept = default;
  VRELWeightPoint3D& operator=(VRELWeightPoint3D const& other) noexcept = default;
  ~VRELWeightPoint3D() override;

  // Replaces the stored coordinates p by A p. The weight stays.
  virtual void Transform(VRELAffine3D const& affine);
  // Replaces the stored coordinates p by s (A p) + w t, or by s (A p); the weight w stays. The flags of the morph, and
  // not its numbers, tell what is applied.
  virtual void Transform(VRELMorph3D const& morph, bool noTranslation);
};
