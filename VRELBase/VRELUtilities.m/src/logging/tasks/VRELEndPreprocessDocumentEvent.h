// The source or the target document is ready for the conversion.
#pragma once

#include "VRELEndTaskEvent.h"

class VREL_EXPORT VRELEndPreprocessDocumentEvent : public VRELEndTaskEvent {
 public:
  // True for the source document, false for the target document.
  VRELEndPreprocessDocumentEvent(VRINResult const& result, bool source);
};
