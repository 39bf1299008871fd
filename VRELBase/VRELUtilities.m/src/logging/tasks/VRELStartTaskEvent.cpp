#include "VRELStartTaskEvent.h"

#include "VRELEventBus.h"
#include "VRELPerfTrackerStatus.h"

VRELStartTaskEvent::VRELStartTaskEvent(char const* name, char const* identifier, VRELEventLevel level)
    : VRELTaskEvent(name, identifier, level) {}

int VRELStartTaskEvent::GetKind() {
  return 0;
}

void VRELStartTaskEvent::Fire(char const* name, char const* identifier, VRELEventLevel level) {
  if (!VRELPerfTrackerStatus::instance.IsPerfTracking()) return;
  VRELStartTaskEvent event(name, identifier, level);
  VRELEventBus::GetEventBus()->Send(event);
}
