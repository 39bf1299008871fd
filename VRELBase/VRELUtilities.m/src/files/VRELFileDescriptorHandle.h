// The handle by which streams share one open file.
#pragma once

#include "VRELExport.h"
#include "VRELFileDescriptor.h"
#include "VRELTypedHandle.h"

// Holds one use of a VRELFileDescriptor, or nothing.
class VREL_EXPORT VRELFileDescriptorHandle : public VRELTypedHandle<VRELFileDescriptor> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
