// Grid of doubles.
#pragma once

#include "VRELExport.h"
#include "detail/VRELMatrixOf.h"

// Two-dimensional array of doubles; the operations are those of VRELMatrixOf. Copies share their values.
class VREL_EXPORT VRELMatrixOfdouble : public VRELMatrixOf<VRELMatrixOfdouble, double> {
 public:
  using VRELMatrixOf::VRELMatrixOf;
};
