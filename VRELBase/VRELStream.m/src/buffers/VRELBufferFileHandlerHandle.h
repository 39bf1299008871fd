// Handle to a VRELBufferFileHandler.
#pragma once

#include "VRELBufferFileHandler.h"
#include "VRELExport.h"
#include "VRELTypedHandle.h"

// Counted handle to a VRELBufferFileHandler, or null.
class VREL_EXPORT VRELBufferFileHandlerHandle : public VRELTypedHandle<VRELBufferFileHandler> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
