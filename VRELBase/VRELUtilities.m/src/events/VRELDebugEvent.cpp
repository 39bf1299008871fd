#include "VRELDebugEvent.h"

VRELDebugEvent::VRELDebugEvent(char const* format, ...) : VRELTextEventOf("VRELDebugEvent", VREL_LEVEL_DEBUG) {
  va_list arguments;
  va_start(arguments, format);
  SetMessage(format, arguments);
  va_end(arguments);
}

VRELDebugEvent::VRELDebugEvent(va_list arguments, char const* format)
    : VRELTextEventOf("VRELDebugEvent", VREL_LEVEL_DEBUG, format, arguments) {}

void VRELDebugEvent::GetFormattedDescription(VRELOutputStream* stream) {
  WriteLine(stream, "");
}
