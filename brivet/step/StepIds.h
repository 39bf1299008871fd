// Which instance an id names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "DocumentVisitor.h"

// Filled with the instances of a document in their order, then sorted, then asked. Of an id that fits into 31 bits an
// instance keeps the number itself (see StepEntityReader), so this class keeps numbers of its own only for longer ones.
//
// Sorted, it takes 8 bytes or less an instance while ids lie close to each other, and 12 where they are far apart.
class StepIds {
 public:
  static constexpr std::uint32_t NONE = UINT32_MAX;

  // A number for an id, the same for the same id: its own, or one of those above 2^63 for an id that has none.
  std::uint64_t NumberOf(DocumentVisitor::Id const& id);
  // Adds the next instance. Gives the number that the instance keeps, -1 where it does not fit.
  int Add(std::uint64_t number);
  std::uint32_t Count() const noexcept { return count; }

  // The number of an instance. `kept` is what Add gave.
  std::uint64_t NumberAt(std::uint32_t instance, int kept) const;
  std::string DigitsOf(std::uint64_t number) const;

  // What `keptAt` gives for an instance that does not count.
  static constexpr int LEFT_OUT = -2;

  // Makes the index. `keptAt(i)` gives what Add gave for an instance. `twice(i, first)` is told, in the order of
  // instances, of each one whose id an earlier one has; the first one serves.
  void Sort(std::function<int(std::uint32_t)> const& keptAt,
            std::function<void(std::uint32_t, std::uint32_t)> const& twice);

  // The instance of an id, from 0 on, or NONE.
  std::uint32_t Find(DocumentVisitor::Id const& id) const;

 private:
  struct LongId {
    std::uint32_t instance;
    std::uint64_t number;
  };

  std::uint32_t count = 0;
  std::uint64_t highest = 0;
  std::vector<LongId> longIds;                           // in the order of instances
  std::unordered_map<std::string, std::uint64_t> named;  // numbers of ids without one of their own
  std::vector<std::string> names;

  // One of the two: instances by their numbers, or numbers in order beside their instances.
  std::vector<std::uint32_t> direct;
  std::vector<std::uint64_t> sortedNumbers;
  std::vector<std::uint32_t> sortedInstances;
};
