#include "VRELAssertEvent.h"

VRELAssertEvent::VRELAssertEvent(char const* format, ...) : VRELTextEventOf("VRELAssertEvent", VREL_LEVEL_ABORT) {
  va_list arguments;
  va_start(arguments, format);
  SetMessage(format, arguments);
  va_end(arguments);
}

VRELAssertEvent::VRELAssertEvent(va_list arguments, char const* format)
    : VRELTextEventOf("VRELAssertEvent", VREL_LEVEL_VERBOSE, format, arguments) {}

void VRELAssertEvent::GetFormattedDescription(VRELOutputStream* stream) {
  WriteLine(stream, "Assert : ");
}
