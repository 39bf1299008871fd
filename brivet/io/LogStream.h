// The stream behind a log.
#pragma once

#include <sys/types.h>

#include <array>
#include <cstddef>

#include "VRELOutputStream.h"

// Writes whole lines into a file, each at once, so that a log holds whole lines whenever the program ends. What the
// system takes in pieces is completed. A line that cannot be written whole is the last: it is taken back, and what
// comes later is left out, so that no log has a gap. A line of more than 8 KiB is written in pieces.
class LogStream final : public VRELOutputStream {
 public:
  // Owns the descriptor of an empty file.
  explicit LogStream(int fileDescriptor);
  // Ends a line that has not ended.
  ~LogStream() override;
  LogStream(LogStream const&) = delete;
  LogStream& operator=(LogStream const&) = delete;

  // Takes all: nobody would look.
  int write(char const* bytes, int count) override;
  // Do nothing: a line is written when it ends.
  void flush() override {}
  void close() override {}

 private:
  void WriteLine(std::size_t count);

  int descriptor;
  bool isBroken = false;
  off_t length = 0;  // of the whole lines in the file
  std::size_t fill = 0;
  std::array<char, 8192> line;
};
