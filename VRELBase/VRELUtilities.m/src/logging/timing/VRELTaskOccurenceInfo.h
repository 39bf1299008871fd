// What all runs of a task cost together.
#pragma once

// A row in the summary of VRELTimingLogger. Times are in seconds.
struct VRELTaskOccurenceInfo {
  int count = 0;
  double elapsed = 0;
  double kernel = 0;  // 0, like the next, where no monitor answered
  double user = 0;
};
