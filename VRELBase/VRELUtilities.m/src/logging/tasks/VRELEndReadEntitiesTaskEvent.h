// The entities of the source document are read.
#pragma once

#include "VRELEndTaskEvent.h"

class VREL_EXPORT VRELEndReadEntitiesTaskEvent : public VRELEndTaskEvent {
 public:
  explicit VRELEndReadEntitiesTaskEvent(VRINResult const& result);
};
