#include "VRELEndOptionsTaskEvent.h"

VRELEndOptionsTaskEvent::VRELEndOptionsTaskEvent(VRINResult const& result)
    : VRELEndTaskEvent(result, "Options logging", "Options", VREL_LEVEL_INFO, false) {}
