// The entities are about to be converted.
#pragma once

#include "VRELStartTaskEvent.h"

// Has no end of its own: VRELEndTaskEvent::Fire closes the task "Conversion".
class VREL_EXPORT VRELStartConversionTaskEvent : public VRELStartTaskEvent {
 public:
  VRELStartConversionTaskEvent();

  // Sends one.
  static void Fire();
};
