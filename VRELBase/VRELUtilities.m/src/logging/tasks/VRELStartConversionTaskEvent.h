// Start of the conversion.
#pragma once

#include "VRELStartTaskEvent.h"

// Start of the conversion of the entities. There is no class for its end: end the task with
// VRELEndTaskEvent::Fire(result, name, "Conversion", level, silent).
class VREL_EXPORT VRELStartConversionTaskEvent : public VRELStartTaskEvent {
 public:
  VRELStartConversionTaskEvent();

  // Sends the event.
  static void Fire();
};
