// The entities of the source document are about to be read.
#pragma once

#include "VRELStartTaskEvent.h"

class VREL_EXPORT VRELStartReadEntitiesTaskEvent : public VRELStartTaskEvent {
 public:
  // The event name "VRELStarReadEntitiesTaskEvent", without a t behind "Star", is promised: listeners know the event
  // by it.
  VRELStartReadEntitiesTaskEvent();
};
