// End of the preprocessing of the source or the target document.
#pragma once

#include "VRELEndTaskEvent.h"

// End of the preprocessing of a document, before the conversion.
class VREL_EXPORT VRELEndPreprocessDocumentEvent : public VRELEndTaskEvent {
 public:
  // `source` is true for the source document and false for the target document.
  VRELEndPreprocessDocumentEvent(VRINResult const& result, bool source);
};
