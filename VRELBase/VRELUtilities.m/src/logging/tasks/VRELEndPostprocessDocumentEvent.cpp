#include "VRELEndPostprocessDocumentEvent.h"

VRELEndPostprocessDocumentEvent::VRELEndPostprocessDocumentEvent(VRINResult const& result)
    : VRELEndTaskEvent(result, "Target Document Postprocessing", "Target Document Postprocessing", VREL_LEVEL_INFO,
                       false) {}
