// The handle by which a VRELPoint3D is passed around.
#pragma once

#include "VRELExport.h"
#include "VRELPoint3D.h"
#include "VRELTypedHandle.h"

// Holds one use of a VRELPoint3D, or nothing.
class VREL_EXPORT VRELPoint3DHandle : public VRELTypedHandle<VRELPoint3D> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
