// Start of a task.
#pragma once

#include "VRELTaskEvent.h"

// Start of a task. Writes nothing by itself; derived classes override GetFormattedDescription.
class VREL_EXPORT VRELStartTaskEvent : public VRELTaskEvent {
 public:
  VRELStartTaskEvent(char const* name, char const* identifier, VRELEventLevel level);

  // Returns 0.
  int GetKind() override;

  // Sends a start event if VRELPerfTrackerStatus::instance is on; otherwise does nothing.
  static void Fire(char const* name, char const* identifier, VRELEventLevel level);
};
