#include "VRELTaskEvent.h"

#include "VRELStreamFormatter.h"
#include "VRELString.h"
#include "VRELTextCopy.h"

VRELTaskEvent::VRELTaskEvent(char const* name, char const* identifier, VRELEventLevel level)
    : VRELEvent(name, level), taskIdentifier(VRELTextCopy(identifier)), taskName(VRELTextCopy(name)) {}

VRELTaskEvent::VRELTaskEvent(VRELTaskEvent const& other)
    : VRELEvent(other), taskIdentifier(VRELTextCopy(other.taskIdentifier)), taskName(VRELTextCopy(other.taskName)) {}

VRELTaskEvent::~VRELTaskEvent() {
  delete[] taskIdentifier;
  delete[] taskName;
}

bool VRELTaskEvent::IsTimed() {
  return true;
}

VRINResult VRELTaskEvent::GetTaskIdentifier(VRELString& identifier) {
  if (taskIdentifier == nullptr) return VREL_E_FAIL;
  identifier = VRELString(taskIdentifier);
  return VREL_S_OK;
}

void VRELTaskEvent::SetTaskIdentifier(char const* identifier) {
  VRELTextReplace(taskIdentifier, identifier);
}

void VRELTaskEvent::SetTaskName(char const* name) {
  VRELTextReplace(taskName, name);
}

void VRELTaskEvent::WriteText(VRELOutputStream* stream, std::string const& text) {
  VRELStreamFormatter formatter(stream);
  if (!text.empty()) formatter << text.c_str();
}
