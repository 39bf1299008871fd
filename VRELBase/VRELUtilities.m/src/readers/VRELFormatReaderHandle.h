// The handle by which a VRELFormatReader is shared.
#pragma once

#include "VRELExport.h"
#include "VRELFormatReader.h"
#include "VRELTypedHandle.h"

// Holds one use of a VRELFormatReader, or nothing.
class VREL_EXPORT VRELFormatReaderHandle : public VRELTypedHandle<VRELFormatReader> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};
