// Channel for debug messages, and a coarse stopwatch.
#pragma once

#include "VRELExport.h"
#include "detail/VRELPrintfFormat.h"

// Indentation counter of VRELDebug. No message of this channel is indented.
extern VREL_EXPORT int _VRELTraceTab;

// Channel with the operations of VRELIndentedChannel. Only NoTabPrintf sends an event.
//
//   VRELDebug::NoTabPrintf("%d candidates", count);  // a VRELDebugEvent of level DEBUG
//   VRELDebug::Printf("%d candidates", count);       // nothing
class VREL_EXPORT VRELDebug {
 public:
  virtual ~VRELDebug();

  // Do nothing.
  //
  // Compatibility: silent, because the library calls them in many places.
  static void Printf(char const* /*format*/, ...) noexcept VREL_PRINTF_FORMAT(1, 2) {}
  static void Print4x4Matrix(float const* /*elements*/) noexcept {}
  static void Print3x4Matrix(double const* /*elements*/) noexcept {}
  static void PrintPointArray(float const* /*coordinates*/, int /*count*/) noexcept {}

  // Sends a VRELDebugEvent without indentation. A null format sends nothing. The message is formatted twice; see
  // VRELIndentedChannel.
  static void NoTabPrintf(char const* format, ...) VREL_PRINTF_FORMAT(1, 2);

  // Add 1 to the counter, or subtract 1.
  static void Tab() noexcept { _VRELTraceTab = static_cast<int>(static_cast<unsigned int>(_VRELTraceTab) + 1U); }
  static void Untab() noexcept { _VRELTraceTab = static_cast<int>(static_cast<unsigned int>(_VRELTraceTab) - 1U); }

  // Starts a stopwatch.
  //
  // Compatibility: returns a std::time_t* on the heap that is never deleted.
  static void* StartTimer();

  // Returns the milliseconds since StartTimer with a resolution of one second; 0 for null.
  static float StopTimer(void* timer);
};

// C functions equivalent to VRELDebug::Tab and VRELDebug::Untab.
extern "C" VREL_EXPORT void VRELDebug_Tab();
extern "C" VREL_EXPORT void VRELDebug_Untab();
