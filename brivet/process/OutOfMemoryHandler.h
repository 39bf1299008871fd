// The last way out where memory is too short even for a report.
#pragma once

// The libraries come up before main, and what they throw then nobody can catch: until Disarm is called, which main does
// first, a process that would be aborted ends with the status of a run out of memory instead.
class OutOfMemoryHandler {
 public:
  // Says on standard error that memory is short, unless the command line asks for quiet, and gives the status.
  static int Tell() noexcept;
  static void Disarm() noexcept;
};
