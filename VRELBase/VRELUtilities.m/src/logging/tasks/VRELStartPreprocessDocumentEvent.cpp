#include "VRELStartPreprocessDocumentEvent.h"

VRELStartPreprocessDocumentEvent::VRELStartPreprocessDocumentEvent(bool source)
    : VRELStartTaskEvent(source ? "Start Source Document Preprocessing" : "Start Target Document Preprocessing",
                         source ? "Source Document Preprocessing" : "Target Document Preprocessing", VREL_LEVEL_INFO) {}
