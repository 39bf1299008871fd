// The log of one run.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "VRELLogFileWrapper.h"

// Writes "brivet_read.log" in the current directory, as VRELLogFileWrapper does, for as long as it is in scope; what
// the file held before is lost. A log that cannot be written, or that would overwrite one of the files which the run
// reads or the standard streams go to, is left out with one warning: the run matters more.
class RunLog {
 public:
  explicit RunLog(std::vector<std::string> const& filesToRead);

  bool IsWriting() const { return log.has_value(); }

 private:
  std::optional<VRELLogFileWrapper> log;
};
