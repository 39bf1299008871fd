#include "VRELStartPostprocessDocumentEvent.h"

VRELStartPostprocessDocumentEvent::VRELStartPostprocessDocumentEvent()
    : VRELStartTaskEvent("Start Target Document Postprocessing", "Target Document Postprocessing", VREL_LEVEL_INFO) {}
