// Set of instances that is cleared often.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

// Stores a bit for each instance, and which words have bits, so that clearing takes no longer than inserting did.
//
// Memory: a bit for each instance up to the highest one, and at most half a bit more.
class StepMarks {
 public:
  // Inserts an instance. Returns whether the set did not contain it.
  bool Insert(std::uint32_t instance) {
    std::size_t const place = instance / kBits;
    if (place >= words.size()) words.resize(std::max(place + 1, 2 * words.size()), 0);
    std::uint64_t& word = words[place];
    std::uint64_t const bit = std::uint64_t(1) << instance % kBits;
    if ((word & bit) != 0) return false;
    if (word == 0) used.push_back(static_cast<std::uint32_t>(place));
    word |= bit;
    return true;
  }
  bool Contains(std::uint32_t instance) const noexcept {
    std::size_t const place = instance / kBits;
    return place < words.size() && (words[place] >> instance % kBits & 1U) != 0;
  }
  void Clear() noexcept {
    for (std::uint32_t const place : used) words[place] = 0;
    used.clear();
  }

 private:
  static constexpr std::uint32_t kBits = 64;

  std::vector<std::uint64_t> words;
  std::vector<std::uint32_t> used;  // the words with bits
};
