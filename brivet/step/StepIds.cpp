#include "StepIds.h"

#include <algorithm>
#include <random>
#include <utility>

namespace {

// Marks a number that is a place.
constexpr std::uint64_t FAR = std::uint64_t(1) << 63U;

// How many places the index has: four for each three instances.
constexpr std::uint64_t PlacesFor(std::uint64_t instances) {
  return instances + instances / 3 + 1;
}

std::uint64_t RandomNumber() {
  std::random_device source;
  return std::uint64_t(source()) << 32U | source();
}

// Spreads numbers that lie side by side over all bits.
std::uint64_t Mix(std::uint64_t number) {
  number = (number ^ (number >> 30U)) * 0xBF58476D1CE4E5B9U;
  number = (number ^ (number >> 27U)) * 0x94D049BB133111EBU;
  return number ^ (number >> 31U);
}

}  // namespace

StepIds::StepIds(NumberAt numbers, DigitsAt digits)
    : numberAt(std::move(numbers)), digitsAt(std::move(digits)), seed(RandomNumber()) {}

std::uint64_t StepIds::NumberOf(DocumentVisitor::Id const& id, std::uint64_t place) {
  return id.fits() ? static_cast<std::uint64_t>(id.number) : FAR | place;
}

void StepIds::Add(std::uint64_t number) {
  highest = std::max(highest, number);
  ++count;
}

DocumentVisitor::Id StepIds::IdOf(std::uint64_t number, std::string& digits) const {
  bool const fits = number < FAR;
  digits = fits ? std::to_string(number) : digitsAt(number & ~FAR);
  DocumentVisitor::Id id;
  id.digits = digits;
  if (fits) id.number = static_cast<std::int64_t>(number);
  return id;
}

bool StepIds::IsDense() const {
  return highest < PlacesFor(count);
}

bool StepIds::IsSame(std::uint64_t number, DocumentVisitor::Id const& id) const {
  if (id.fits() || number < FAR) return number == static_cast<std::uint64_t>(id.number);
  return digitsAt(number & ~FAR) == id.digits;
}

// Where the id stands in the index, or the free place where it would stand.
std::size_t StepIds::PlaceOf(DocumentVisitor::Id const& id) const {
  std::uint64_t hash = Mix(static_cast<std::uint64_t>(id.number) ^ seed);
  if (!id.fits()) {
    for (char const digit : id.digits) hash = Mix(hash + static_cast<unsigned char>(digit));
  }
  std::size_t place = hash % index.size();
  while (index[place] != NONE && !IsSame(numberAt(index[place]), id)) place = (place + 1) % index.size();
  return place;
}

void StepIds::Index(std::function<void(std::uint32_t, std::uint32_t)> const& twice) {
  dense = IsDense();
  index.assign(PlacesFor(count), NONE);
  std::string digits;
  for (std::uint32_t i = 0; i < count; ++i) {
    std::uint64_t const number = numberAt(i);
    if (number == LEFT_OUT) continue;
    std::uint32_t& instance = index[dense ? number : PlaceOf(IdOf(number, digits))];
    if (instance == NONE) {
      instance = i;
    } else {
      twice(i, instance);
    }
  }
}

std::uint32_t StepIds::Find(DocumentVisitor::Id const& id) const {
  if (index.empty()) return NONE;
  if (!dense) return index[PlaceOf(id)];
  // An id that does not fit is the highest of all numbers here.
  std::uint64_t const number = static_cast<std::uint64_t>(id.number);
  return number < index.size() ? index[number] : NONE;
}
