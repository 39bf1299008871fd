// Traces the system calls of a program and makes some of them fail.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

// Fault of one of the traced system calls, which are numbered from 1 in a run. The call is not made, or is made for
// fewer bytes; or a signal arrives during the call.
struct SystemCallFault {
  long number = 0;           // 0 for none
  int error = 0;             // an errno; 0 for a transfer of half of the requested bytes
  bool isPermanent = false;  // also for all later calls of the same name
  int signal = 0;            // instead of an error
};

struct SystemCallRun {
  int status = 0;                  // as returned by waitpid
  long count = 0;                  // of the traced calls
  std::vector<long> transfers;     // the numbers of those that can transfer fewer bytes
  std::vector<long> reads;         // those of them that read
  std::vector<std::string> names;  // the names of all calls, in order
  bool hasOccurred = false;        // the fault has occurred; a call that transfers nothing cannot be short
  std::string failedCall;          // the name of the call
};

// Prepares the calling process for tracing, before exec. Returns false if the system does not allow it.
bool AllowTracing();

// Traces the child to its end. With `withoutUnnamedFiles`, O_TMPFILE fails as on a file system that does not support
// it.
SystemCallRun Trace(pid_t process, SystemCallFault const& fault, bool withoutUnnamedFiles = false);

// Returns whether system calls of this architecture can be traced.
bool CanTrace();
