#include "VRELEndWriteFileTaskEvent.h"

#include "VRELFormatterBinding.h"

VRELEndWriteFileTaskEvent::VRELEndWriteFileTaskEvent(VRELString const& fileName, VRINResult const& result)
    : VRELEndTaskEvent(result, "File Write", "File Write", VREL_LEVEL_INFO, false),
      formatter(nullptr),
      name(fileName) {}

// The formatter has a stream only during GetFormattedDescription, so there is nothing to copy.
VRELEndWriteFileTaskEvent::VRELEndWriteFileTaskEvent(VRELEndWriteFileTaskEvent const& other)
    : VRELEndTaskEvent(other), formatter(nullptr), name(other.name) {}

void VRELEndWriteFileTaskEvent::GetFormattedDescription(VRELOutputStream* stream) {
  VRELFormatterBinding const binding(formatter, stream);
  VRINResult const result = getTaskResult();
  formatter << "Output File ";
  if (name.length() > 0) formatter << "\"" << name << "\" ";
  if (result == VREL_S_OK) {
    formatter << "is Successfully Written\n";
  } else if (result == VREL_E_ABORTED) {
    formatter << "Writing is Aborted\n";
  } else {
    formatter << "Writing has Failed with code" << static_cast<long>(result) << "\n";
  }
  formatter << Rule;
}
