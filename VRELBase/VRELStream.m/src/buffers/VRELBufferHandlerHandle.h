// Handle to a VRELBufferHandler.
#pragma once

#include "VRELBufferHandler.h"
#include "VRELExport.h"
#include "VRELTypedHandle.h"

// Counted handle to a VRELBufferHandler, or null.
class VREL_EXPORT VRELBufferHandlerHandle : public VRELTypedHandle<VRELBufferHandler> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
