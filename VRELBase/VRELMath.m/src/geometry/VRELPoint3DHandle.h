// Handle of a VRELPoint3D.
#pragma once

#include "VRELExport.h"
#include "VRELPoint3D.h"
#include "VRELTypedHandle.h"

// Reference-counting handle of a VRELPoint3D, or null.
class VREL_EXPORT VRELPoint3DHandle : public VRELTypedHandle<VRELPoint3D> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
