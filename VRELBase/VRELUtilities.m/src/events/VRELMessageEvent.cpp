#include "VRELMessageEvent.h"

VRELMessageEvent::VRELMessageEvent(char const* format, ...)
    : VRELTextEventOf("VRELMessageEvent", VREL_LEVEL_INFO), prefixed(true) {
  va_list arguments;
  va_start(arguments, format);
  SetMessage(format, arguments);
  va_end(arguments);
}

VRELMessageEvent::VRELMessageEvent(va_list arguments, char const* format)
    : VRELTextEventOf("VRELMessageEvent", VREL_LEVEL_INFO, format, arguments), prefixed(true) {}

VRELMessageEvent::VRELMessageEvent(Prefix prefix, char const* format, ...)
    : VRELTextEventOf("VRELMessageEvent", VREL_LEVEL_INFO), prefixed(prefix.isEnabled) {
  va_list arguments;
  va_start(arguments, format);
  SetMessage(format, arguments);
  va_end(arguments);
}

void VRELMessageEvent::GetFormattedDescription(VRELOutputStream* stream) {
  WriteLine(stream, prefixed ? "Message : " : "");
}
