#include "VRELErrorEvent.h"

VRELErrorEvent::VRELErrorEvent(char const* format, ...)
    : VRELTextEventOf("VRELErrorEvent", VREL_LEVEL_ERROR), failure(&VRELError::FAIL_ERROR) {
  va_list arguments;
  va_start(arguments, format);
  SetMessage(format, arguments);
  va_end(arguments);
}

VRELErrorEvent::VRELErrorEvent(va_list arguments, char const* format)
    : VRELTextEventOf("VRELErrorEvent", VREL_LEVEL_ERROR, format, arguments), failure(&VRELError::FAIL_ERROR) {}

VRELErrorEvent::VRELErrorEvent(VRELError& error)
    : VRELTextEventOf("VRELErrorEvent", VREL_LEVEL_ERROR), failure(&error) {}

void VRELErrorEvent::GetFormattedDescription(VRELOutputStream* stream) {
  if (GetMessage() != nullptr) {
    WriteLine(stream, "Error : ");
  } else {
    failure->GetFormattedDescription(stream);
  }
}

VRELError* VRELErrorEvent::GetError() {
  return failure;
}

VRINResult VRELErrorEvent::Fire(VRELError& error, char const* file, int line) {
  error.SetSourceFileInfo(file, line);
  // The error can be an element of the tracker's array, which moves its elements when it grows.
  VRINResult const result = error.GetErrorType();
  VRELErrorEvent event(error);
  VRELEventBus::GetEventBus()->Send(event);
  return result;
}
