// A log file for as long as it is in scope.
#pragma once

#include <cstdio>

#include "VRELExport.h"
#include "VRELLogger.h"

class VRELFilePath;

// Owns a file and the logger that writes to it. The environment variable VRELLogLevel sets the threshold, INFO if it
// is unset or no keyword. A file that cannot be had gives an idle wrapper, silently.
//
//   VRELLogFileWrapper const log(true);  // brivet_read.log holds all that follows
//
// A file that is opened here loses what it held before.
class VREL_EXPORT VRELLogFileWrapper {
 public:
  // The file stays the caller's, and open longer than the wrapper lives. Null is allowed.
  explicit VRELLogFileWrapper(std::FILE* borrowedFile);
  explicit VRELLogFileWrapper(VRELFilePath const& path);
  // "brivet_read.log" or "brivet_write.log" in the current directory.
  explicit VRELLogFileWrapper(bool reading);
  // No pointer passes for a bool: the text of a path is wrapped in a VRELFilePath.
  template <class T>
  explicit VRELLogFileWrapper(T const* pointer) = delete;
  VRELLogFileWrapper(VRELLogFileWrapper const&) = delete;
  VRELLogFileWrapper& operator=(VRELLogFileWrapper const&) = delete;
  // Ends the log and closes a file that was opened here.
  ~VRELLogFileWrapper();

 private:
  void Start(std::FILE* openFile);

  std::FILE* file;
  VRELLogger logger;
  bool borrowed;
};
