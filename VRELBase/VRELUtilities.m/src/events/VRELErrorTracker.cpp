#include "VRELErrorTracker.h"

#include <memory>

#include "VRELErrorEvent.h"
#include "VRELEventBus.h"

VRELErrorTracker* VRELErrorTracker::_pTracker = nullptr;

VRELErrorTracker::VRELErrorTracker() = default;

VRELErrorTracker::~VRELErrorTracker() {
  if (_pTracker == nullptr) return;
  VRELEventBus::GetEventBus()->RemoveListener(_pTracker);
  _pTracker = nullptr;
}

VRINResult VRELErrorTracker::Initialize() {
  if (_pTracker == nullptr) {
    auto tracker = std::make_unique<VRELErrorTracker>();
    VRELEventBus::GetEventBus()->AddListener(tracker.get());
    _pTracker = tracker.release();
  }
  return VREL_S_OK;
}

VRINResult VRELErrorTracker::Reset() {
  if (_pTracker != nullptr) _pTracker->ClearErrorList();
  return VREL_S_OK;
}

void VRELErrorTracker::HandleEvent(VRELEvent& event) {
  if (!event.IsA("VRELErrorEvent")) return;
  // Events of other classes can have that name too.
  auto* const errorEvent = dynamic_cast<VRELErrorEvent*>(&event);
  VRELError const* const error = errorEvent == nullptr ? nullptr : errorEvent->GetError();
  if (error != nullptr) errors.add(*error);
}

VRELError* VRELErrorTracker::GetLastError() {
  return GetError(GetErrorCount() - 1);
}

VRELError* VRELErrorTracker::GetError(int index) {
  return index >= 0 && index < GetErrorCount() ? &errors[index] : nullptr;
}

void VRELErrorTracker::ClearErrorList() {
  errors.clear();
}
