#include "VRELStartReadFileTaskEvent.h"

#include "VRELEventBus.h"
#include "VRELString.h"
#include "VRELTextCopy.h"

namespace {

char* NarrowName(VRELString const& name) {
  char* narrowName = nullptr;
  if (name.length() > 0) VRELStringToChars(name, narrowName);
  return narrowName;
}

}  // namespace

VRELStartReadFileTaskEvent::VRELStartReadFileTaskEvent(VRELString const& name)
    : VRELStartTaskEvent("VRELStartReadFileTaskEvent", "Read File", VREL_LEVEL_INFO), fileName(NarrowName(name)) {}

VRELStartReadFileTaskEvent::VRELStartReadFileTaskEvent(char const* name)
    : VRELStartTaskEvent("VRELStartReadFileTaskEvent", "Read File", VREL_LEVEL_INFO), fileName(VRELTextCopy(name)) {}

VRELStartReadFileTaskEvent::VRELStartReadFileTaskEvent(VRELStartReadFileTaskEvent const& other)
    : VRELStartTaskEvent(other), fileName(VRELTextCopy(other.fileName)) {}

VRELStartReadFileTaskEvent::~VRELStartReadFileTaskEvent() {
  delete[] fileName;
}

void VRELStartReadFileTaskEvent::GetFormattedDescription(VRELOutputStream* /*stream*/) {}

void VRELStartReadFileTaskEvent::Fire(VRELString const& name) {
  VRELStartReadFileTaskEvent event(name);
  VRELEventBus::GetEventBus()->Send(event);
}

void VRELStartReadFileTaskEvent::Fire(char const* name) {
  VRELStartReadFileTaskEvent event(name);
  VRELEventBus::GetEventBus()->Send(event);
}
