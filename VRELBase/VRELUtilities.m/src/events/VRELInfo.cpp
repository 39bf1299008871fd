#include "VRELInfo.h"

#include <cstdarg>

#include "VRELChannelLine.h"
#include "VRELMessageEvent.h"

int _VRELInfoTab = 0;

VRELInfo::~VRELInfo() = default;

void VRELInfo::PrintfAsItIs(char const* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  VRELSendLine<VRELMessageEvent>(_VRELInfoTab, format, arguments, false);
  va_end(arguments);
}

void VRELInfo::Print3x3Matrix(float const* a) {
  if (a == nullptr) return;
  for (int r = 0; r < 3; ++r) {
    Printf("[%05.3f, %05.3f, %05.3f]\n", static_cast<double>(a[r]), static_cast<double>(a[3 + r]),
           static_cast<double>(a[6 + r]));
  }
}

void VRELInfo_NoTabPrintf(char const* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  VRELSendLine<VRELMessageEvent>(0, format, arguments);
  va_end(arguments);
}
