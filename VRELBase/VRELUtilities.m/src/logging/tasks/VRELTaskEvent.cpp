#include "VRELTaskEvent.h"

#include <memory>

#include "VRELStreamFormatter.h"
#include "VRELString.h"
#include "VRELTextCopy.h"

namespace {

// Copies both strings, or none of them if an allocation fails.
void CopyStrings(char const* identifier, char const* name, char*& identifierCopy, char*& nameCopy) {
  std::unique_ptr<char[]> first(VRELTextCopy(identifier));
  nameCopy = VRELTextCopy(name);
  identifierCopy = first.release();
}

}  // namespace

VRELTaskEvent::VRELTaskEvent(char const* name, char const* identifier, VRELEventLevel level)
    : VRELEvent(name, level), taskIdentifier(nullptr), taskName(nullptr) {
  CopyStrings(identifier, name, taskIdentifier, taskName);
}

VRELTaskEvent::VRELTaskEvent(VRELTaskEvent const& other)
    : VRELEvent(other), taskIdentifier(nullptr), taskName(nullptr) {
  CopyStrings(other.taskIdentifier, other.taskName, taskIdentifier, taskName);
}

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
