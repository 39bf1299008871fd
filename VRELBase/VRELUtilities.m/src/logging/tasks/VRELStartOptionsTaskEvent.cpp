#include "VRELStartOptionsTaskEvent.h"

#include "VRELEventBus.h"

VRELStartOptionsTaskEvent::VRELStartOptionsTaskEvent()
    : VRELStartTaskEvent("VRELStartOptionsTaskEvent", "Options", VREL_LEVEL_INFO) {}

void VRELStartOptionsTaskEvent::GetFormattedDescription(VRELOutputStream* stream) {
  WriteText(stream, "--------------------- Options Set by User ------------------\n");
}

void VRELStartOptionsTaskEvent::Fire() {
  VRELStartOptionsTaskEvent event;
  VRELEventBus::GetEventBus()->Send(event);
}
