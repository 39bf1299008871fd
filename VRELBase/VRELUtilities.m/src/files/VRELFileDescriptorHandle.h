// Handle of a VRELFileDescriptor.
#pragma once

#include "VRELExport.h"
#include "VRELFileDescriptor.h"
#include "VRELTypedHandle.h"

// Handle of a VRELFileDescriptor, by which streams share an open file.
class VREL_EXPORT VRELFileDescriptorHandle : public VRELTypedHandle<VRELFileDescriptor> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
