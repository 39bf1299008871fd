// Start of the reading of the entities.
#pragma once

#include "VRELStartTaskEvent.h"

// Start of the reading of the entities of the source document.
class VREL_EXPORT VRELStartReadEntitiesTaskEvent : public VRELStartTaskEvent {
 public:
  // Compatibility: the event name is "VRELStarReadEntitiesTaskEvent", without the second t of "Start".
  VRELStartReadEntitiesTaskEvent();
};
