// Message channel that the environment turns on by name.
#pragma once

#include "VRELExport.h"
#include "detail/VRELPrintfFormat.h"

// Class of the event that VRELTrace::Printf sends. Other values send nothing.
enum VRELTraceLevel : int {
  VREL_TRACE_DEBUG = 1,    // VRELDebugEvent
  VREL_TRACE_MESSAGE = 2,  // VRELMessageEvent, with its prefix
  VREL_TRACE_ERROR = 3,    // VRELErrorEvent
};

// Message channel that is enabled if the environment variable VRELLoggers contains its name.
//
//   VRELTrace const trace("topology");  // VRELLoggers=topology,units
//   trace.Printf(VREL_TRACE_DEBUG, "%d faces", count);
//
// The name may be anywhere in the value; case matters. The variable is read in the constructor.
class VREL_EXPORT VRELTrace {
 public:
  // A null name is never enabled. An empty name is enabled if the variable is set.
  explicit VRELTrace(char const* name);
  virtual ~VRELTrace();

  // Sends the formatted text if the channel is enabled. A null format sends nothing.
  //
  // Compatibility: the text is formatted twice, as in VRELIndentedChannel.
  void Printf(VRELTraceLevel level, char const* format, ...) const VREL_PRINTF_FORMAT(3, 4);

 private:
  bool enabled;
};
