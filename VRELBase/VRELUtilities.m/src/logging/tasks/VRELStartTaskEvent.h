// A task begins.
#pragma once

#include "VRELTaskEvent.h"

// Without a text; the classes below that have one bring it.
class VREL_EXPORT VRELStartTaskEvent : public VRELTaskEvent {
 public:
  VRELStartTaskEvent(char const* name, char const* identifier, VRELEventLevel level);

  // 0.
  int GetKind() override;

  // Sends a start that carries nothing but its time, and only while VRELPerfTrackerStatus::instance is on: otherwise
  // no event is built.
  static void Fire(char const* name, char const* identifier, VRELEventLevel level);
};
