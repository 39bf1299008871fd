// Grid of 3D points.
#pragma once

#include "VRELExport.h"
#include "VRELPoint3D.h"
#include "detail/VRELMatrixOf.h"

// Two-dimensional array of 3D points; the operations are those of VRELMatrixOf. Copies share their values.
class VREL_EXPORT VRELMatrixOfVRELPoint3D : public VRELMatrixOf<VRELMatrixOfVRELPoint3D, VRELPoint3D> {
 public:
  using VRELMatrixOf::VRELMatrixOf;
};
