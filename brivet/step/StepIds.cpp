// Three forms. Most exporters number instances in order, with few exceptions: then runs of consecutive ids are all that
// is stored, and the longest one is tried first. If ids are in another order, but almost without gaps, there is a table
// in which the id is the slot, and a look-up is one access. Otherwise the table is a hash table with linear probing at
// a load of at most three quarters, with a seeded hash function so that no document can choose ids that collide. Both
// tables contain instances, not ids: the id is read from the instance.
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

// Begins a run, unless there are too many.
void StepIds::AddOther(std::uint64_t number) {
  highest = std::max(highest, number);
  hasAllRuns = hasAllRuns && runs.size() < kRunLimit;
  if (hasAllRuns) {
    runs.push_back({number, count, 1});
    nextNumber = number + 1;
  }
  ++count;
}

std::uint64_t StepIds::Highest() const noexcept {
  std::uint64_t result = highest;
  for (Run const& run : runs) result = std::max(result, run.id + run.length - 1);
  return result;
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
  return Highest() < SlotsFor(count);
}

bool StepIds::HasRuns() {
  if (!hasAllRuns || Highest() >= kOffsetMark || runs.empty()) return false;
  std::sort(runs.begin(), runs.end(), [](Run const& a, Run const& b) { return a.id < b.id; });
  // Runs that overlap contain duplicates.
  auto const overlaps = [](Run const& a, Run const& b) { return b.id - a.id < a.length; };
  if (std::adjacent_find(runs.begin(), runs.end(), overlaps) != runs.end()) return false;
  longest = *std::max_element(runs.begin(), runs.end(), [](Run const& a, Run const& b) { return a.length < b.length; });
  return true;
}

std::uint32_t StepIds::FindInRuns(std::uint64_t number) const {
  auto const isBefore = [](std::uint64_t wanted, Run const& run) { return wanted < run.id; };
  auto const next = std::upper_bound(runs.begin(), runs.end(), number, isBefore);
  if (next == runs.begin()) return kNone;
  Run const& run = *(next - 1);
  return number - run.id < run.length ? run.instance + static_cast<std::uint32_t>(number - run.id) : kNone;
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

void StepIds::Index(std::uint32_t indexed, std::function<void(std::uint32_t, std::uint32_t)> const& onDuplicate) {
  if (indexed == count && HasRuns()) {
    form = Form::Runs;
    return;
  }
  form = IsDense() ? Form::Dense : Form::Hashed;
  // Dense ids need no slot after the highest one.
  index.assign(form == Form::Dense ? Highest() + 1 : SlotsFor(count), kNone);
  std::string digits;
  for (std::uint32_t i = 0; i < count; ++i) {
    std::uint64_t const number = numberAt(i);
    if (number == kLeftOut) continue;
    std::uint32_t& instance = index[form == Form::Dense ? number : SlotOf(IdOf(number, digits))];
    if (instance == kNone) {
      instance = i;
    } else {
      onDuplicate(i, instance);
    }
  }
}
