// The handle by which a VRELBuffer is passed around.
#pragma once

#include "VRELBuffer.h"
#include "VRELExport.h"
#include "VRELTypedHandle.h"

// Holds one use of a VRELBuffer, or nothing.
class VREL_EXPORT VRELBufferHandle : public VRELTypedHandle<VRELBuffer> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
