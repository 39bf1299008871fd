// Lines of the instances of a STEP file.
#pragma once

#include <cstdint>
#include <vector>

#include "StepBuffer.h"
#include "StepContents.h"

// Returns the line in which the records of an instance begin. Only the line of each kStep-th instance is stored; from
// there on the line ends are counted in the file when a message or a list needs a line. A query continues at the result
// of the one before if that is nearer, so that queries in the order of the file take linear time.
//
// Memory: 8 bytes for kStep instances.
class StepLines {
 public:
  static constexpr std::uint32_t kStep = 64;

  // Ownership: nothing is owned.
  StepLines(StepContents const& instances, StepBuffer const& bytes) noexcept : contents(instances), buffer(bytes) {}

  // Adds the next instance.
  void Add(long line) {
    if (count++ % kStep == 0) lines.push_back(line);
  }
  // Requires: the instance, from 0, was added to the contents.
  long At(std::uint32_t instance);

 private:
  StepContents const& contents;
  StepBuffer const& buffer;
  std::uint32_t count = 0;
  std::vector<long> lines;
  // Result of the last query.
  std::uint32_t last = UINT32_MAX;
  long lastLine = 0;
};
