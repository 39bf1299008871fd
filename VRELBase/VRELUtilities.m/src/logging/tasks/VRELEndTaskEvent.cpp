#include "VRELEndTaskEvent.h"

#include "VRELEventBus.h"
#include "VRELPerfTrackerStatus.h"

VRELEndTaskEvent::VRELEndTaskEvent(VRINResult const& result, char const* name, char const* identifier,
                                   VRELEventLevel level, bool isSilent)
    : VRELTaskEvent(name, identifier, level), taskResult(result), silent(isSilent) {}

void VRELEndTaskEvent::GetFormattedDescription(VRELOutputStream* stream) {
  WriteText(stream, ResultText());
}

int VRELEndTaskEvent::GetKind() {
  return 1;
}

std::string VRELEndTaskEvent::ResultText() const {
  if (silent) return {};
  char const* const name = GetEventName();
  return std::string(Rule) + (name == nullptr ? "" : name) + " Result : " + taskResult.GetMessage() + '\n' + Rule;
}

void VRELEndTaskEvent::Fire(VRINResult const& result, char const* name, char const* identifier, VRELEventLevel level,
                            bool isSilent) {
  if (!VRELPerfTrackerStatus::instance.IsPerfTracking()) return;
  VRELEndTaskEvent event(result, name, identifier, level, isSilent);
  VRELEventBus::GetEventBus()->Send(event);
}
