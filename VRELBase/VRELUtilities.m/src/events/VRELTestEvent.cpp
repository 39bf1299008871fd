#include "VRELTestEvent.h"

VRELTestEvent::VRELTestEvent(char const* format, ...) : VRELTextEventOf("VRELTestEvent", VREL_LEVEL_TEST) {
  va_list arguments;
  va_start(arguments, format);
  SetMessage(format, arguments);
  va_end(arguments);
}

VRELTestEvent::VRELTestEvent(va_list arguments, char const* format)
    : VRELTextEventOf("VRELTestEvent", VREL_LEVEL_TEST, format, arguments) {}

void VRELTestEvent::GetFormattedDescription(VRELOutputStream* stream) {
  WriteLine(stream, "");
}
