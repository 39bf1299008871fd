#include "VRELEndReadEntitiesTaskEvent.h"

VRELEndReadEntitiesTaskEvent::VRELEndReadEntitiesTaskEvent(VRINResult const& result)
    : VRELEndTaskEvent(result, "Entity Reading", "Read Entities", VREL_LEVEL_INFO, false) {}
