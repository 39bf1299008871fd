// The logs of one run.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "VRELLogger.h"

// Writes "brivet_read.log" or "brivet_write.log" in the current directory, line by line, for as long as it is in scope;
// what the file held before is lost. The level is that of the environment, as of VRELLogFileWrapper. A log that cannot
// be written, or that would overwrite one of the files of the run or what the standard streams go to, is left out with
// one warning: the run matters more.
class RunLog {
 public:
  enum Half { Read, Write };

  // The files are those that the run reads and writes; they need not exist.
  RunLog(Half half, std::vector<std::string> const& filesOfRun);

  bool IsWriting() const { return log.has_value(); }

  // Removes the log of an earlier run, so that it is not taken for one of this run: a regular file that is none of the
  // files of the run.
  static void RemoveOld(Half half, std::vector<std::string> const& filesOfRun);

 private:
  // Empty where the log began, else why it did not.
  std::string Begin(char const* name);

  std::optional<VRELLogger> log;
};
