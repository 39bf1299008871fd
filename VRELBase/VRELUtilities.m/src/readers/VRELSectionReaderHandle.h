// The handle by which a VRELSectionReader is shared.
#pragma once

#include "VRELExport.h"
#include "VRELSectionReader.h"
#include "VRELTypedHandle.h"

// Holds one use of a VRELSectionReader, or nothing.
class VREL_EXPORT VRELSectionReaderHandle : public VRELTypedHandle<VRELSectionReader> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
