#include "VRELEventBus.h"

#include <ctime>

VRELEventBus::VRELEventBus() = default;

VRELEventBus::~VRELEventBus() = default;

void VRELEventBus::AddListener(VRELEventListener* listener) {
  if (listener != nullptr) vrelArrayAddUnique<VRELEventListener*>(listeners, listener);
}

void VRELEventBus::RemoveListener(VRELEventListener* listener) {
  if (listener != nullptr) vrelArrayRemove<VRELEventListener*>(listeners, listener);
}

void VRELEventBus::Stamp(VRELEvent& event) {
  long const ticks = static_cast<long>(std::clock());
  event.SetClock(ticks);
  long const seconds = static_cast<long>(std::time(nullptr));
  event.SetTime(seconds);
}
