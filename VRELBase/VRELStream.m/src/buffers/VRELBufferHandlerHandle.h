// The handle by which a VRELBufferHandler is passed around.
#pragma once

#include "VRELBufferHandler.h"
#include "VRELExport.h"
#include "VRELTypedHandle.h"

// Holds one use of a VRELBufferHandler, or nothing.
class VREL_EXPORT VRELBufferHandlerHandle : public VRELTypedHandle<VRELBufferHandler> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
