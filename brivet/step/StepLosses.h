// Record of what could not be read of a STEP file.
#pragma once

#include <string>
#include <vector>

#include "Loss.h"

// Adds to the losses of a document. Beyond kLimit losses the last one is extended, so that the memory of a hostile file
// stays in proportion to its size.
class StepLosses {
 public:
  static constexpr std::size_t kLimit = 100'000;

  // Ownership: `document` is not owned.
  explicit StepLosses(std::vector<Loss>& document) : losses(document) {}

  // Adds a part of the file that was left out.
  void Add(Loss loss);
  // Adds the reason why a file is incomplete, which is not counted as a part.
  void AddIncomplete(long line, std::string const& reason);

  long Count() const noexcept { return count; }
  bool IsIncomplete() const noexcept { return incomplete; }

 private:
  void Append(Loss loss);

  std::vector<Loss>& losses;
  long count = 0;
  bool incomplete = false;
};
