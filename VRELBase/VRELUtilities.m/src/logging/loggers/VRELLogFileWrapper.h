// Log file with the lifetime of an object.
#pragma once

#include <cstdio>

#include "VRELExport.h"
#include "VRELLogger.h"

class VRELFilePath;

// Log file: opens a file and a logger on it, and closes both in the destructor.
//
//   VRELLogFileWrapper const log(true);  // events are written to brivet_read.log while `log` exists
//
// The environment variable VRELLogLevel sets the threshold; VREL_LEVEL_INFO if it is unset or not a keyword.
//
// Errors: if the file cannot be opened, the object does nothing. No event is sent.
//
// The file is opened by fopen with mode "w" under exactly the given path: symbolic links are followed, and an existing
// file is truncated. In a directory that other users can write to, choose a path that they cannot create beforehand, or
// open the file by other means and pass the stream.
class VREL_EXPORT VRELLogFileWrapper {
 public:
  // Writes to a file of the caller, which stays open. Null is allowed.
  explicit VRELLogFileWrapper(std::FILE* borrowedFile);
  // Creates or truncates the file.
  explicit VRELLogFileWrapper(VRELFilePath const& path);
  // Creates or truncates "brivet_read.log" (true) or "brivet_write.log" (false) in the current directory.
  explicit VRELLogFileWrapper(bool reading);
  // Deleted, so that a string literal is not converted to bool. Use VRELLogFileWrapper(VRELFilePath("name")).
  template <class T>
  explicit VRELLogFileWrapper(T const* pointer) = delete;
  VRELLogFileWrapper(VRELLogFileWrapper const&) = delete;
  VRELLogFileWrapper& operator=(VRELLogFileWrapper const&) = delete;
  // Closes the file if the constructor opened it, and removes the logger from the bus.
  ~VRELLogFileWrapper();

 private:
  void Start(std::FILE* openFile);

  std::FILE* file;
  VRELLogger logger;
  bool borrowed;
};
