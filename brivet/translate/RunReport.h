// Machine-readable result of a translation.
#pragma once

#include <string>
#include <vector>

#include "Loss.h"
#include "VRINResult.h"

// The exit status of a partial result.
constexpr int kPartialStatus = 8;

// Returns the exit status of a run with this result: 0 for a success, 8 for a partial one, 1 for an
// invalid option, otherwise the return code.
int ExitStatusOf(VRINResult result);

// The result of one input, for -report.
struct RunReport {
  std::string input;
  std::string output;  // empty if nothing was written
  int exitStatus = 0;
  long instances = 0;
  std::vector<Loss> lost;
  long dangling = 0;   // references to instances that do not exist
  double seconds = 0;  // of wall-clock time
  long bytes = 0;      // of the input, after decompression

  // Returns the report as one line of JSON, with its line end. A byte of a name that is not valid UTF-8 is written as
  // the escape of a lone surrogate, "\udc80" to "\udcff", as Python does.
  std::string ToJson() const;
};
