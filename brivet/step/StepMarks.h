// Set of instances that is cleared often.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

// Stores for each instance the round in which it was inserted last, so that clearing takes constant time, and no
// insertion allocates once the highest instance is known.
//
// Memory: 4 bytes for each instance up to the highest one.
class StepMarks {
 public:
  // Inserts an instance. Returns whether the set did not contain it.
  bool Insert(std::uint32_t instance) {
    if (instance >= rounds.size())
      rounds.resize(std::max<std::size_t>(instance + std::size_t(1), 2 * rounds.size()), 0);
    return std::exchange(rounds[instance], round) != round;
  }
  void Clear() noexcept {
    if (++round != 0) return;
    std::fill(rounds.begin(), rounds.end(), 0U);
    round = 1;
  }

 private:
  std::vector<std::uint32_t> rounds;
  std::uint32_t round = 1;
};
