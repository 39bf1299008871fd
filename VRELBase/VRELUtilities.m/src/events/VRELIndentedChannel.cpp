#include "VRELIndentedChannel.h"

#include <cstdarg>

#include "VRELChannelLine.h"
#include "VRELInfo.h"
#include "VRELMessageEvent.h"
#include "VRELTest.h"
#include "VRELTestEvent.h"
#include "VRELVerbose.h"
#include "VRELWarning.h"
#include "VRELWarningEvent.h"

template <class Event, int& tab>
void VRELIndentedChannel<Event, tab>::Printf(char const* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  VRELSendLine<Event>(tab, format, arguments);
  va_end(arguments);
}

template <class Event, int& tab>
void VRELIndentedChannel<Event, tab>::NoTabPrintf(char const* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  VRELSendLine<Event>(0, format, arguments);
  va_end(arguments);
}

template <class Event, int& tab>
void VRELIndentedChannel<Event, tab>::Print4x4Matrix(float const* a) {
  if (a == nullptr) return;
  for (int r = 0; r < 4; ++r) {
    Printf("[%6.3f, %6.3f, %6.3f, %6.3f]\n", static_cast<double>(a[r]), static_cast<double>(a[4 + r]),
           static_cast<double>(a[8 + r]), static_cast<double>(a[12 + r]));
  }
}

template <class Event, int& tab>
void VRELIndentedChannel<Event, tab>::Print3x4Matrix(double const* a) {
  if (a == nullptr) return;
  for (int r = 0; r < 3; ++r) Printf("[%05.3f, %05.3f, %05.3f, %05.3f]\n", a[r], a[3 + r], a[6 + r], a[9 + r]);
}

template <class Event, int& tab>
void VRELIndentedChannel<Event, tab>::PrintPointArray(float const* a, int count) {
  if (a == nullptr) return;
  for (int r = 0; r < count; ++r, a += 3) {
    Printf("{%6.3f, %6.3f, %6.3f}\n", static_cast<double>(a[2]), static_cast<double>(a[1]), static_cast<double>(a[0]));
  }
}

template class VRELIndentedChannel<VRELWarningEvent, _VRELWarningTab>;
template class VRELIndentedChannel<VRELMessageEvent, _VRELInfoTab>;
template class VRELIndentedChannel<VRELMessageEvent, _VRELVerboseTab>;
template class VRELIndentedChannel<VRELTestEvent, _VRELTestTab>;
