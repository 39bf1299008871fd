// Handle of a VRELFile.
#pragma once

#include "VRELExport.h"
#include "VRELFile.h"
#include "VRELTypedHandle.h"

// Handle of a VRELFile.
class VREL_EXPORT VRELFileHandle : public VRELTypedHandle<VRELFile> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
