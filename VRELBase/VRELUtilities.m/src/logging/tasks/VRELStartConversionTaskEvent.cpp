#include "VRELStartConversionTaskEvent.h"

#include "VRELEventBus.h"

VRELStartConversionTaskEvent::VRELStartConversionTaskEvent()
    : VRELStartTaskEvent("VRELStartConversionTaskEvent", "Conversion", VREL_LEVEL_INFO) {}

void VRELStartConversionTaskEvent::Fire() {
  VRELStartConversionTaskEvent event;
  VRELEventBus::GetEventBus()->Send(event);
}
