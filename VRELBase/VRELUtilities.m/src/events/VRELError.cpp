#include "VRELError.h"

#include <cstdarg>

#include "VRELChannelLine.h"
#include "VRELErrorEvent.h"
#include "VRELErrorTracker.h"
#include "VRELStreamFormatter.h"

VRELError::VRELError() : VRELError(VREL_UNDETERMINED) {}

VRELError::VRELError(long errorType) : type(errorType), sourceLine(0) {}

VRELError::VRELError(long errorType, VRELString const& text) : type(errorType), description(text), sourceLine(0) {}

VRELError::VRELError(VRELError const& other) = default;

VRELError& VRELError::operator=(VRELError const& other) = default;

VRELError::~VRELError() = default;

VRINResult VRELError::SetDescription(VRELString& text) {
  description = text;
  return VREL_S_OK;
}

VRINResult VRELError::GetDescription(VRELString& text) {
  text = description;
  return VREL_S_OK;
}

void VRELError::GetFormattedDescription(VRELOutputStream* stream) {
  if (type == 0) return;
  VRELStreamFormatter formatter(stream);
  if (description.length() > 0) {
    formatter << "Error Description : " << description;
  } else {
    formatter << "Error " << static_cast<int>(type);
  }
  formatter << formatter.endline();
}

void VRELError::SetSourceFileInfo(char const* file, int line) {
  sourceFile = VRELString(file);
  sourceLine = line;
}

void VRELError::Printf(char const* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  VRELSendLine<VRELErrorEvent>(0, format, arguments);
  va_end(arguments);
}

VRELError* VRELError::GetLastError() {
  VRELErrorTracker* const tracker = VRELErrorTracker::GetInstance();
  return tracker == nullptr ? nullptr : tracker->GetLastError();
}

int VRELError::GetErrorCount() {
  VRELErrorTracker const* const tracker = VRELErrorTracker::GetInstance();
  return tracker == nullptr ? 0 : tracker->GetErrorCount();
}

VRELError* GetError(int index) {
  VRELErrorTracker* const tracker = VRELErrorTracker::GetInstance();
  return tracker == nullptr ? nullptr : tracker->GetError(index);
}

void VRELError_Printf(char const* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  VRELSendLine<VRELErrorEvent>(0, format, arguments);
  va_end(arguments);
}
