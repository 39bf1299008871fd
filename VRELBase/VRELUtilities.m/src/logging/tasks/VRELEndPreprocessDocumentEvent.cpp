#include "VRELEndPreprocessDocumentEvent.h"

VRELEndPreprocessDocumentEvent::VRELEndPreprocessDocumentEvent(VRINResult const& result, bool source)
    : VRELEndTaskEvent(result, source ? "Source Document Preprocessing" : "Target Document Preprocessing",
                       source ? "Source Document Preprocessing" : "Target Document Preprocessing", VREL_LEVEL_INFO,
                       false) {}
