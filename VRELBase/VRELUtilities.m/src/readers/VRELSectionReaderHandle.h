// Handle of a VRELSectionReader.
#pragma once

#include "VRELExport.h"
#include "VRELSectionReader.h"
#include "VRELTypedHandle.h"

// Handle of a VRELSectionReader.
class VREL_EXPORT VRELSectionReaderHandle : public VRELTypedHandle<VRELSectionReader> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
