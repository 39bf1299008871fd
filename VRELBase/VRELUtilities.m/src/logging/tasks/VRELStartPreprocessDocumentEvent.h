// The source or the target document is about to be made ready for the conversion.
#pragma once

#include "VRELStartTaskEvent.h"

class VREL_EXPORT VRELStartPreprocessDocumentEvent : public VRELStartTaskEvent {
 public:
  // True for the source document, false for the target document.
  explicit VRELStartPreprocessDocumentEvent(bool source);
};
