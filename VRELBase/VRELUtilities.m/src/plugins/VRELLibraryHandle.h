// The handle by which a VRELLibrary is shared.
#pragma once

#include "VRELExport.h"
#include "VRELLibrary.h"
#include "VRELTypedHandle.h"

// Holds one use of a VRELLibrary, or nothing.
class VREL_EXPORT VRELLibraryHandle : public VRELTypedHandle<VRELLibrary> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
