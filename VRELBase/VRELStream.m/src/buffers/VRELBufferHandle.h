// Handle to a VRELBuffer.
#pragma once

#include "VRELBuffer.h"
#include "VRELExport.h"
#include "VRELTypedHandle.h"

// Counted handle to a VRELBuffer, or null.
class VREL_EXPORT VRELBufferHandle : public VRELTypedHandle<VRELBuffer> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
