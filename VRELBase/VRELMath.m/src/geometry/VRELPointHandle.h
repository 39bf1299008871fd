// Handle of a VRELPoint.
#pragma once

#include "VRELExport.h"
#include "VRELPoint.h"
#include "VRELTypedHandle.h"

// Reference-counting handle of a VRELPoint, or null.
class VREL_EXPORT VRELPointHandle : public VRELTypedHandle<VRELPoint> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
