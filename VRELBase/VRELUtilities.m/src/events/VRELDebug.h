// The channel for developers, and a coarse stopwatch.
#pragma once

#include "VRELExport.h"
#include "detail/VRELPrintfFormat.h"

// The indentation of the channel; nothing that the channel sends is indented.
extern VREL_EXPORT int _VRELTraceTab;

// A channel like those of VRELIndentedChannel, most of which is silent: only NoTabPrintf sends, a VRELDebugEvent at
// level DEBUG.
class VREL_EXPORT VRELDebug {
 public:
  virtual ~VRELDebug();

  // Do nothing. That is promised: the library is full of calls that must stay silent.
  static void Printf(char const* /*format*/, ...) noexcept VREL_PRINTF_FORMAT(1, 2) {}
  static void Print4x4Matrix(float const* /*elements*/) noexcept {}
  static void Print3x4Matrix(double const* /*elements*/) noexcept {}
  static void PrintPointArray(float const* /*coordinates*/, int /*count*/) noexcept {}

  // Sends the text without indentation. A null format sends nothing. The text is formatted twice, as
  // VRELIndentedChannel tells.
  static void NoTabPrintf(char const* format, ...) VREL_PRINTF_FORMAT(1, 2);

  // Add 1 to the counter, and take 1 from it.
  static void Tab() noexcept { _VRELTraceTab = static_cast<int>(static_cast<unsigned int>(_VRELTraceTab) + 1U); }
  static void Untab() noexcept { _VRELTraceTab = static_cast<int>(static_cast<unsigned int>(_VRELTraceTab) - 1U); }

  // Starts a stopwatch: a std::time_t on the heap. That nobody releases it is promised.
  static void* StartTimer();

  // Milliseconds since StartTimer, counted in whole seconds; 0 for null.
  static float StopTimer(void* timer);
};

// VRELDebug::Tab and VRELDebug::Untab under C names.
extern "C" VREL_EXPORT void VRELDebug_Tab();
extern "C" VREL_EXPORT void VRELDebug_Untab();
