// The target document is about to be finished.
#pragma once

#include "VRELStartTaskEvent.h"

class VREL_EXPORT VRELStartPostprocessDocumentEvent : public VRELStartTaskEvent {
 public:
  VRELStartPostprocessDocumentEvent();
};
