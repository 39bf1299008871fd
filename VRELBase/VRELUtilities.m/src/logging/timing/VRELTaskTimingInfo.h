// Start of a task that has not ended.
#pragma once

#include "VRELString.h"

// Entry of the task stack of VRELTimingLogger.
struct VRELTaskTimingInfo {
  VRELString taskName;    // task identifier
  long time = 0;          // time() at the start, in seconds
  long clock = 0;         // clock() at the start, in ticks
  double kernelTime = 0;  // times of the process at the start, in seconds; 0 without a monitor
  double userTime = 0;
};
