// Start of the preprocessing of the source or the target document.
#pragma once

#include "VRELStartTaskEvent.h"

// Start of the preprocessing of a document, before the conversion.
class VREL_EXPORT VRELStartPreprocessDocumentEvent : public VRELStartTaskEvent {
 public:
  // `source` is true for the source document and false for the target document.
  explicit VRELStartPreprocessDocumentEvent(bool source);
};
