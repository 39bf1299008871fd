#include "StepIds.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::uint64_t FIRST_NAMED = std::uint64_t(1) << 63;
// Ids are taken as indexes while at least every second one is used.
constexpr std::uint64_t SPREAD = 2;
constexpr std::uint64_t SMALL = 1024;

}  // namespace

std::uint64_t StepIds::NumberOf(DocumentVisitor::Id const& id) {
  if (id.fits()) return static_cast<std::uint64_t>(id.number);
  auto const [place, isNew] = named.emplace(std::string(id.digits), FIRST_NAMED + names.size());
  if (isNew) names.emplace_back(id.digits);
  return place->second;
}

int StepIds::Add(std::uint64_t number) {
  highest = std::max(highest, number);
  std::uint32_t const instance = count++;
  if (number <= static_cast<std::uint64_t>(std::numeric_limits<int>::max())) return static_cast<int>(number);
  longIds.push_back({instance, number});
  return -1;
}

std::uint64_t StepIds::NumberAt(std::uint32_t instance, int kept) const {
  if (kept >= 0) return static_cast<std::uint64_t>(kept);
  return std::lower_bound(longIds.begin(), longIds.end(), instance,
                          [](LongId const& each, std::uint32_t wanted) { return each.instance < wanted; })
      ->number;
}

std::string StepIds::DigitsOf(std::uint64_t number) const {
  return number < FIRST_NAMED ? std::to_string(number) : names[number - FIRST_NAMED];
}

void StepIds::Sort(std::function<int(std::uint32_t)> const& keptAt,
                   std::function<void(std::uint32_t, std::uint32_t)> const& twice) {
  if (highest <= SPREAD * count + SMALL) {
    direct.assign(highest + 1, NONE);
    for (std::uint32_t i = 0; i < count; ++i) {
      int const kept = keptAt(i);
      if (kept == LEFT_OUT) continue;
      std::uint32_t& place = direct[NumberAt(i, kept)];
      if (place == NONE) {
        place = i;
      } else {
        twice(i, place);
      }
    }
    return;
  }
  std::vector<std::uint64_t> numbers(count);
  for (std::uint32_t i = 0; i < count; ++i) {
    int const kept = keptAt(i);
    if (kept == LEFT_OUT) continue;
    sortedInstances.push_back(i);
    numbers[i] = NumberAt(i, kept);
  }
  std::sort(sortedInstances.begin(), sortedInstances.end(), [&numbers](std::uint32_t a, std::uint32_t b) {
    return numbers[a] != numbers[b] ? numbers[a] < numbers[b] : a < b;
  });
  for (std::uint32_t const instance : sortedInstances) sortedNumbers.push_back(numbers[instance]);
  std::vector<std::pair<std::uint32_t, std::uint32_t>> repeated;
  for (std::uint32_t i = 1, first = 0; i < sortedNumbers.size(); ++i) {
    if (sortedNumbers[i] != sortedNumbers[first]) {
      first = i;
    } else {
      repeated.emplace_back(sortedInstances[i], sortedInstances[first]);
    }
  }
  std::sort(repeated.begin(), repeated.end());
  for (auto const& [instance, first] : repeated) twice(instance, first);
}

std::uint32_t StepIds::Find(DocumentVisitor::Id const& id) const {
  std::uint64_t number = static_cast<std::uint64_t>(id.number);
  if (!id.fits()) {
    auto const place = named.find(std::string(id.digits));
    if (place == named.end()) return NONE;
    number = place->second;
  }
  if (!direct.empty()) return number < direct.size() ? direct[number] : NONE;
  auto const place = std::lower_bound(sortedNumbers.begin(), sortedNumbers.end(), number);
  if (place == sortedNumbers.end() || *place != number) return NONE;
  return sortedInstances[static_cast<std::size_t>(place - sortedNumbers.begin())];
}
