#include "VRELVerboseEvent.h"

VRELVerboseEvent::VRELVerboseEvent(char const* format, ...) : VRELTextEventOf("VRELVerboseEvent", VREL_LEVEL_VERBOSE) {
  va_list arguments;
  va_start(arguments, format);
  SetMessage(format, arguments);
  va_end(arguments);
}

VRELVerboseEvent::VRELVerboseEvent(va_list arguments, char const* format)
    : VRELTextEventOf("VRELVerboseEvent", VREL_LEVEL_VERBOSE, format, arguments) {}

void VRELVerboseEvent::GetFormattedDescription(VRELOutputStream* stream) {
  WriteLine(stream, "");
}
