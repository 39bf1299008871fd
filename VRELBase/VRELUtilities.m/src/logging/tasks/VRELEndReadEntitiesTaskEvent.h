// End of the reading of the entities.
#pragma once

#include "VRELEndTaskEvent.h"

// End of the reading of the entities of the source document.
class VREL_EXPORT VRELEndReadEntitiesTaskEvent : public VRELEndTaskEvent {
 public:
  explicit VRELEndReadEntitiesTaskEvent(VRINResult const& result);
};
