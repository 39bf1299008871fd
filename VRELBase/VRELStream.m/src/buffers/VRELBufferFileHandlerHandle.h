// The handle by which a VRELBufferFileHandler is passed around.
#pragma once

#include "VRELBufferFileHandler.h"
#include "VRELExport.h"
#include "VRELTypedHandle.h"

// Holds one use of a VRELBufferFileHandler, or nothing.
class VREL_EXPORT VRELBufferFileHandlerHandle : public VRELTypedHandle<VRELBufferFileHandler> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
