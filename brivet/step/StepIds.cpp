// Two table layouts. Exporters number instances almost without gaps: then the id is the slot, and a look-up is one
// access. Otherwise the table is a hash table with linear probing at a load of at most three quarters, with a seeded
// hash function so that no document can choose ids that collide. Both tables contain instances, not ids: the id is read
// from the instance.
#include "StepIds.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "StepHash.h"

namespace {

// Marks a number that is an offset.
constexpr std::uint64_t kOffsetMark = std::uint64_t(1) << 63U;

constexpr std::uint64_t SlotsFor(std::uint64_t instances) {
  return instances + instances / 3 + 1;
}

}  // namespace

StepIds::StepIds(NumberAt numbers, DigitsAt digits)
    : numberAt(std::move(numbers)), digitsAt(std::move(digits)), seed(RandomSeed()) {}

std::uint64_t StepIds::NumberOf(DocumentVisitor::Id const& id, std::uint64_t offset) {
  return id.fits() ? static_cast<std::uint64_t>(id.number) : kOffsetMark | offset;
}

void StepIds::Add(std::uint64_t number) {
  highest = std::max(highest, number);
  ++count;
}

DocumentVisitor::Id StepIds::IdOf(std::uint64_t number, std::string& digits, std::size_t limit) const {
  bool const fits = number < kOffsetMark;
  if (fits) {
    char buffer[24];
    digits.assign(buffer, std::to_chars(buffer, buffer + sizeof buffer, number).ptr);
  } else {
    digits = digitsAt(number & ~kOffsetMark, limit);
  }
  DocumentVisitor::Id id;
  id.digits = digits;
  if (fits) id.number = static_cast<std::int64_t>(number);
  return id;
}

bool StepIds::IsDense() const {
  return highest < SlotsFor(count);
}

bool StepIds::IsSame(std::uint64_t number, DocumentVisitor::Id const& id) const {
  if (id.fits() || number < kOffsetMark) return number == static_cast<std::uint64_t>(id.number);
  return digitsAt(number & ~kOffsetMark, id.digits.size() + 1) == id.digits;
}

// Returns the slot that contains the id, or the free one for it.
std::size_t StepIds::SlotOf(DocumentVisitor::Id const& id) const {
  std::uint64_t const hash =
      id.fits() ? MixBits(static_cast<std::uint64_t>(id.number) ^ seed) : HashString(id.digits, seed);
  std::size_t slot = hash % index.size();
  while (index[slot] != kNone && !IsSame(numberAt(index[slot]), id)) slot = (slot + 1) % index.size();
  return slot;
}

void StepIds::Index(std::function<void(std::uint32_t, std::uint32_t)> const& onDuplicate) {
  dense = IsDense();
  index.assign(SlotsFor(count), kNone);
  std::string digits;
  for (std::uint32_t i = 0; i < count; ++i) {
    std::uint64_t const number = numberAt(i);
    if (number == kLeftOut) continue;
    std::uint32_t& instance = index[dense ? number : SlotOf(IdOf(number, digits))];
    if (instance == kNone) {
      instance = i;
    } else {
      onDuplicate(i, instance);
    }
  }
}
