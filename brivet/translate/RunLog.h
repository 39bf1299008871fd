// Log file of a run.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "VRELLogger.h"

// Writes all events to a log file, line by line, while the object exists. An existing log is overwritten. The level is
// that of the environment, as for VRELLogFileWrapper.
//
// The log is left out, with one warning, if it cannot be written, if it is a file that the run reads or writes or that
// a standard stream is connected to, or if its name is anything but a regular file of this user with one link: a
// symbolic or hard link that another user created must not redirect the log to another file.
class RunLog {
 public:
  // `filesOfRun` are the files that the run reads and writes. They need not exist.
  RunLog(std::string const& path, std::vector<std::string> const& filesOfRun);

  bool IsWriting() const { return log.has_value(); }

  // Removes the log of an earlier run, so that it is not taken for one of this run. Leaves anything that the
  // constructor would not overwrite.
  static void RemoveOld(std::string const& path, std::vector<std::string> const& filesOfRun);

 private:
  std::optional<VRELLogger> log;
};
