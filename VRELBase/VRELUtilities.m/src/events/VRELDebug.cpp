#include "VRELDebug.h"

#include <cstdarg>
#include <ctime>

#include "VRELChannelLine.h"
#include "VRELDebugEvent.h"

int _VRELTraceTab = 0;

VRELDebug::~VRELDebug() = default;

void VRELDebug::NoTabPrintf(char const* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  VRELSendLine<VRELDebugEvent>(0, format, arguments);
  va_end(arguments);
}

void* VRELDebug::StartTimer() {
  return new std::time_t(std::time(nullptr));
}

float VRELDebug::StopTimer(void* timer) {
  if (timer == nullptr) return 0;
  constexpr double millisecondsPerSecond = 1000;
  double const seconds = std::difftime(std::time(nullptr), *static_cast<std::time_t*>(timer));
  return static_cast<float>(seconds * millisecondsPerSecond);
}

void VRELDebug_Tab() {
  VRELDebug::Tab();
}

void VRELDebug_Untab() {
  VRELDebug::Untab();
}
