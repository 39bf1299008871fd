// Handle of a VRELLibrary.
#pragma once

#include "VRELExport.h"
#include "VRELLibrary.h"
#include "VRELTypedHandle.h"

// Handle of a VRELLibrary.
class VREL_EXPORT VRELLibraryHandle : public VRELTypedHandle<VRELLibrary> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
