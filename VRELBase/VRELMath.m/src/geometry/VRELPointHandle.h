// The handle by which a VRELPoint is passed around.
#pragma once

#include "VRELExport.h"
#include "VRELPoint.h"
#include "VRELTypedHandle.h"

// Holds one use of a VRELPoint, or nothing.
class VREL_EXPORT VRELPointHandle : public VRELTypedHandle<VRELPoint> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
