// Writes a file.
#pragma once

#include <cstdio>

#include "VRELExport.h"
#include "VRELFileDescriptorHandle.h"
#include "VRELOutputStream.h"

class VRELFilePath;

// Writes to a file that is open, or that it opens, with one call of the system for each write; nothing is buffered, so
// what is written is in the file. Copies share the file, which closes when the last of them is gone, if a stream opened
// it.
class VREL_EXPORT VRELFileOutputStream : public VRELOutputStream {
 public:
  // Standard output.
  VRELFileOutputStream();
  // The file of a stream that stays the caller's. What the caller still buffers there is not waited for.
  explicit VRELFileOutputStream(std::FILE* stream);
  // Makes the file, or empties it; one that cannot be opened raises "CANNOT_OPEN_FILE" through Gk_ErrMgr.
  explicit VRELFileOutputStream(VRELFilePath const& path);
  // Takes a use of the descriptor. With null every write fails.
  explicit VRELFileOutputStream(VRELFileDescriptor* file);
  VRELFileOutputStream(VRELFileOutputStream const&) = default;
  VRELFileOutputStream& operator=(VRELFileOutputStream const&) = default;
  ~VRELFileOutputStream() override;

  // What the system took, -1 on failure and for a count below 0.
  int write(char const* buffer, int count) override;
  void flush() override;
  // Does nothing: a file closes with its last stream.
  void close() override;

  // Standard output.
  static VRELFileOutputStream console;

 private:
  void commit();

  VRELFileDescriptorHandle descriptor;
};
