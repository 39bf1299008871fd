// End of the postprocessing of the target document.
#pragma once

#include "VRELEndTaskEvent.h"

// End of the postprocessing of the target document.
class VREL_EXPORT VRELEndPostprocessDocumentEvent : public VRELEndTaskEvent {
 public:
  explicit VRELEndPostprocessDocumentEvent(VRINResult const& result);
};
