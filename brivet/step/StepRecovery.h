// Finds where reading resumes after a syntax error.
#pragma once

#include "StepBuffer.h"
#include "StepScanner.h"

// Searches the bytes of a file for the next start of an instance or a section.
class StepRecovery {
 public:
  enum class Part { Header, Entries, Data, Scope };

  explicit StepRecovery(StepBuffer& bytes) : buffer(bytes) {}

  // Returns the position, after `from`, at which reading resumes, or the end of the file. `from` is the start of what
  // could not be read. Moves the offset of the buffer.
  StepScanner::Position Find(StepScanner::Position from, Part part);
  // Returns whether the last position is the first one of its line that is not blank.
  bool IsAtLineBegin() const noexcept { return atLineBegin; }

 private:
  enum class Start { None, Instance, Word };

  Start StartAt(unsigned long offset, Part part) const;

  StepBuffer& buffer;
  // No line between these offsets begins with an instance.
  unsigned long searchedBegin = 0;
  unsigned long searchedEnd = 0;
  bool atLineBegin = false;
};
