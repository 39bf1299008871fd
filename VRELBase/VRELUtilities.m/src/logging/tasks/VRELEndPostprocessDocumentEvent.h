// The target document is finished.
#pragma once

#include "VRELEndTaskEvent.h"

class VREL_EXPORT VRELEndPostprocessDocumentEvent : public VRELEndTaskEvent {
 public:
  explicit VRELEndPostprocessDocumentEvent(VRINResult const& result);
};
