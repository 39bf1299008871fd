// Handle of a VRELPoint2D.
#pragma once

#include "VRELExport.h"
#include "VRELPoint2D.h"
#include "VRELTypedHandle.h"

// Reference-counting handle of a VRELPoint2D, or null.
class VREL_EXPORT VRELPoint2DHandle : public VRELTypedHandle<VRELPoint2D> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
