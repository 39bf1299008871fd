#include "VRELStartReadEntitiesTaskEvent.h"

VRELStartReadEntitiesTaskEvent::VRELStartReadEntitiesTaskEvent()
    : VRELStartTaskEvent("VRELStarReadEntitiesTaskEvent", "Read Entities", VREL_LEVEL_INFO) {}
