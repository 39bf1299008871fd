// Output stream of a log file.
#pragma once

#include <sys/types.h>

#include <array>
#include <cstddef>

#include "VRELOutputStream.h"

// Writes each line to the file as soon as it is complete, so that a log consists of complete lines whenever the program
// ends. After a line that cannot be written in full, that line is removed again and nothing more is written, so that no
// log has a gap. A line of more than 8 KiB is written in pieces.
class LogStream final : public VRELOutputStream {
 public:
  // Takes ownership of the descriptor of an empty file.
  explicit LogStream(int fileDescriptor);
  // Completes the last line if it has no line end.
  ~LogStream() override;
  LogStream(LogStream const&) = delete;
  LogStream& operator=(LogStream const&) = delete;

  // Returns `count` in every case: a log that cannot be written does not stop the program.
  int write(char const* bytes, int count) override;
  // Do nothing: a line is written when it is complete.
  void flush() override {}
  void close() override {}

 private:
  void WriteLines(std::size_t count);

  int descriptor;
  bool isBroken = false;
  off_t length = 0;  // of the complete lines in the file
  std::size_t fill = 0;
  std::array<char, 8192> buffer;
};
