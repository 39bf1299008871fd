// Grid of 3D weight points.
#pragma once

#include "VRELExport.h"
#include "VRELWeightPoint3D.h"
#include "detail/VRELMatrixOf.h"

// Two-dimensional array of 3D weight points; the operations are those of VRELMatrixOf. Copies share their values.
class VREL_EXPORT VRELMatrixOfVRELWeightPoint3D
    : public VRELMatrixOf<VRELMatrixOfVRELWeightPoint3D, VRELWeightPoint3D> {
 public:
  using VRELMatrixOf::VRELMatrixOf;
};
