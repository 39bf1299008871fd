#include "VRELEventBus.h"

#include <ctime>

#include "VRELEvent.h"

namespace {

void Stamp(VRELEvent& event) {
  long const ticks = static_cast<long>(std::clock());
  event.SetClock(ticks);
  long const seconds = static_cast<long>(std::time(nullptr));
  event.SetTime(seconds);
}

}  // namespace

VRELEventBus::VRELEventBus() = default;

VRELEventBus::~VRELEventBus() = default;

void VRELEventBus::AddListener(VRELEventListener* listener) {
  if (listener != nullptr) vrelArrayAddUnique<VRELEventListener*>(listeners, listener);
}

void VRELEventBus::RemoveListener(VRELEventListener* listener) {
  if (listener != nullptr) vrelArrayRemove<VRELEventListener*>(listeners, listener);
}

void VRELEventBus::Send(VRELEvent& event) {
  if (event.IsTimed()) Stamp(event);
  int const count = listeners.size();
  // A listener that shortens the list ends the walk early, hence the second bound.
  for (int i = 0; i < count && i < listeners.size(); ++i) {
    VRELEventListener* const listener = listeners[i];
    if (listener != nullptr) listener->HandleEvent(event);
  }
}
