// Watches the system calls of a program, and makes some of them fail.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

// What the kernel seems to answer to one of the calls that read and write, counted from 1 and from the start of the
// program on. The call is not made, or is made for less.
struct SystemCallFault {
  long number = 0;         // 0: none fails
  int error = 0;           // an errno; 0 for a call that comes back short: half of what was asked for
  bool isForGood = false;  // all calls behind it with the same name, too
};

struct SystemCallRun {
  int status = 0;               // as waitpid tells it
  long count = 0;               // calls of reading and writing
  std::vector<long> transfers;  // the numbers of those that can come back short
  std::vector<long> reads;      // those of them that read
  bool wasMet = false;          // the fault was put in; a call that transfers nothing cannot be short
  std::string met;              // the name of the call
};

// To be called in the child, before it becomes the program. False where the system does not let a process be traced.
bool AllowTracing();

// Leads the child to its end. Leaves the kernel's own errors as they are. `withoutUnnamedFiles` makes a file system
// that knows none: its O_TMPFILE is refused.
SystemCallRun Trace(pid_t process, SystemCallFault const& fault, bool withoutUnnamedFiles = false);

// Whether this machine's calls are known here.
bool CanTrace();
