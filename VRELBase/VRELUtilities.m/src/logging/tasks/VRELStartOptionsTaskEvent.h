// Start of the list of options.
#pragma once

#include "VRELStartTaskEvent.h"

// Start of the list of options in a log.
class VREL_EXPORT VRELStartOptionsTaskEvent : public VRELStartTaskEvent {
 public:
  VRELStartOptionsTaskEvent();

  // Writes the heading of the list.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  // Sends the event.
  static void Fire();
};
