// The handle by which a VRELPoint2D is passed around.
#pragma once

#include "VRELExport.h"
#include "VRELPoint2D.h"
#include "VRELTypedHandle.h"

// Holds one use of a VRELPoint2D, or nothing.
class VREL_EXPORT VRELPoint2DHandle : public VRELTypedHandle<VRELPoint2D> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
