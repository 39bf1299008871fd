// A task that has begun and not ended.
#pragma once

#include "VRELString.h"

// What VRELTimingLogger keeps of it.
struct VRELTaskTimingInfo {
  VRELString taskName;    // the task identifier
  long time = 0;          // calendar seconds at the start
  long clock = 0;         // processor ticks at the start
  double kernelTime = 0;  // of the process at the start, in seconds; 0 when no monitor answered
  double userTime = 0;
};
