// Output stream on a file.
#pragma once

#include <cstdio>

#include "VRELExport.h"
#include "VRELFileDescriptorHandle.h"
#include "VRELOutputStream.h"

class VRELFilePath;

// Writes to a file that is already open, or that it opens, with one system call per write and no buffering.
//
//   VRELFileOutputStream report(VRELFilePath("report.txt"));
//   report.write("done\n", 5);
//
// Ownership: copies share the file. A file that a stream opened is closed when the last copy is destroyed.
class VREL_EXPORT VRELFileOutputStream : public VRELOutputStream {
 public:
  // Writes to standard output.
  VRELFileOutputStream();
  // Writes to the file of a C stream, past the buffer of that stream: flush it first.
  // Ownership: the caller keeps and closes `stream`.
  explicit VRELFileOutputStream(std::FILE* stream);
  // Creates or truncates a file.
  // Errors: raises "CANNOT_OPEN_FILE" through Gk_ErrMgr if the file cannot be opened.
  explicit VRELFileOutputStream(VRELFilePath const& path);
  // Shares the descriptor. With null every write fails.
  explicit VRELFileOutputStream(VRELFileDescriptor* file);
  VRELFileOutputStream(VRELFileOutputStream const&) = default;
  VRELFileOutputStream& operator=(VRELFileOutputStream const&) = default;
  ~VRELFileOutputStream() override;

  // Returns the number of bytes that the system wrote, or -1 on failure and for a count below 0.
  int write(char const* buffer, int count) override;
  void flush() override;
  // Does nothing. The file is closed with its last stream.
  void close() override;

  // Standard output.
  static VRELFileOutputStream console;

 private:
  void commit();

  VRELFileDescriptorHandle descriptor;
};
