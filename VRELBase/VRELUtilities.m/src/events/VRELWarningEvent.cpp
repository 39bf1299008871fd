#include "VRELWarningEvent.h"

VRELWarningEvent::VRELWarningEvent(char const* format, ...) : VRELTextEventOf("VRELWarningEvent", VREL_LEVEL_WARNING) {
  va_list arguments;
  va_start(arguments, format);
  SetMessage(format, arguments);
  va_end(arguments);
}

VRELWarningEvent::VRELWarningEvent(va_list arguments, char const* format)
    : VRELTextEventOf("VRELWarningEvent", VREL_LEVEL_INFO, format, arguments) {}

VRELWarningEvent::VRELWarningEvent(va_list arguments, char const* format, int size)
    : VRELTextEventOf("VRELWarningEvent", VREL_LEVEL_INFO, format, arguments, size) {}

void VRELWarningEvent::GetFormattedDescription(VRELOutputStream* stream) {
  WriteLine(stream, "Warning : ");
}

void VRELWarningEvent::Fire(int size, char const* format, ...) {
  if (format == nullptr) return;
  va_list arguments;
  va_start(arguments, format);
  VRELWarningEvent event(arguments, format, size);
  va_end(arguments);
  VRELEventBus::GetEventBus()->Send(event);
}
