// Accumulated times of a task.
#pragma once

// Row of the summary of VRELTimingLogger: all runs of one task. Times are in seconds.
struct VRELTaskOccurenceInfo {
  int count = 0;
  double elapsed = 0;
  double kernel = 0;  // `kernel` and `user` are 0 without a monitor
  double user = 0;
};
