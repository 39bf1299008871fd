// Start of the postprocessing of the target document.
#pragma once

#include "VRELStartTaskEvent.h"

// Start of the postprocessing of the target document.
class VREL_EXPORT VRELStartPostprocessDocumentEvent : public VRELStartTaskEvent {
 public:
  VRELStartPostprocessDocumentEvent();
};
