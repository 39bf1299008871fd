#include "StepEntities.h"

#include <array>

namespace {

// Hash table with linear probing, built at compile time. FNV-1a (G. Fowler, L. C. Noll, P. Vo) over names that are part
// of the program, so that no input can make entries collide; a name from a file costs one short probe run.
constexpr std::size_t kSlots = 1024;
static_assert(kStepEntityCount * 2 < kSlots);

constexpr std::uint32_t Hash(std::string_view name) {
  std::uint32_t hash = 2166136261U;
  for (char const letter : name) hash = (hash ^ static_cast<unsigned char>(letter)) * 16777619U;
  return hash ^ hash >> 15U;
}

constexpr std::array<std::uint16_t, kSlots> BuildTable() {
  std::array<std::uint16_t, kSlots> table{};
  for (std::size_t i = 1; i < kStepEntityCount; ++i) {
    std::size_t slot = Hash(kStepEntities[i].name) % kSlots;
    while (table[slot] != 0) slot = (slot + 1) % kSlots;
    table[slot] = static_cast<std::uint16_t>(i);
  }
  return table;
}

constexpr std::array<std::uint16_t, kSlots> kTable = BuildTable();

constexpr StepEntityTable kConstantTable;

}  // namespace

StepEntityTable const kStepEntityTable = kConstantTable;

StepEntity FindStepEntity(std::string_view name) noexcept {
  for (std::size_t slot = Hash(name) % kSlots; kTable[slot] != 0; slot = (slot + 1) % kSlots) {
    if (name == kStepEntities[kTable[slot]].name) return static_cast<StepEntity>(kTable[slot]);
  }
  return StepEntity::None;
}
