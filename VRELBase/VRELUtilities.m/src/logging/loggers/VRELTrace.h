// A channel that the user turns on by name.
#pragma once

#include "VRELExport.h"
#include "detail/VRELPrintfFormat.h"

// What a line of a trace is sent as. With any other value nothing is sent.
enum VRELTraceLevel : int {
  VREL_TRACE_DEBUG = 1,    // VRELDebugEvent
  VREL_TRACE_MESSAGE = 2,  // VRELMessageEvent, prefixed
  VREL_TRACE_ERROR = 3,    // VRELErrorEvent
};

// Says something only where the environment variable VRELLoggers holds its name, anywhere in its value and in the same
// case, at the time of its construction.
//
//   VRELTrace const trace("topology");  // VRELLoggers=topology,units
//   trace.Printf(VREL_TRACE_DEBUG, "%d faces", count);
class VREL_EXPORT VRELTrace {
 public:
  // A null name is never enabled; an empty one is, where there is the variable.
  explicit VRELTrace(char const* name);
  virtual ~VRELTrace();

  // Sends the text on the event bus. A null format sends nothing. The text is formatted twice, as VRELIndentedChannel
  // tells.
  void Printf(VRELTraceLevel level, char const* format, ...) const VREL_PRINTF_FORMAT(3, 4);

 private:
  bool enabled;
};
