// The handle by which a VRELFile is passed around.
#pragma once

#include "VRELExport.h"
#include "VRELFile.h"
#include "VRELTypedHandle.h"

// Holds one use of a VRELFile, or nothing.
class VREL_EXPORT VRELFileHandle : public VRELTypedHandle<VRELFile> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
