// Handle of a VRELFormatReader.
#pragma once

#include "VRELExport.h"
#include "VRELFormatReader.h"
#include "VRELTypedHandle.h"

// Handle of a VRELFormatReader.
class VREL_EXPORT VRELFormatReaderHandle : public VRELTypedHandle<VRELFormatReader> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
