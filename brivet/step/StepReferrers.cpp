#include "StepReferrers.h"

#include <algorithm>
#include <utility>

#include "InputError.h"

namespace {

constexpr std::uint32_t NOBODY = UINT32_MAX;

[[noreturn]] void FailChanged() {
  throw InputError{VREL_E_INVALID_FILE, 0, "expected the references that were counted, found others"};
}

}  // namespace

StepReferrers::StepReferrers(std::uint32_t instances, Walk allReferences)
    : walk(std::move(allReferences)), counts(instances, 0) {
  Count();
}

void StepReferrers::Count() {
  std::vector<std::uint32_t> lastSource(counts.size(), NOBODY);
  walk([&](std::uint32_t source, std::uint32_t target) {
    if (std::exchange(lastSource[target], source) != source) ++counts[target];
  });
}

StepReferrers::Range StepReferrers::Of(std::uint32_t target) {
  if (target < spanBegin || target >= spanEnd) Collect(target);
  return {sources.data() + counts[target], sources.data() + EndOf(target)};
}

// Behind the last referrer of an instance of the span.
std::uint32_t StepReferrers::EndOf(std::uint32_t target) const {
  return target + 1 < spanEnd ? counts[target + 1] : static_cast<std::uint32_t>(sources.size());
}

void StepReferrers::Collect(std::uint32_t first) {
  EndSpan();
  BeginSpan(first);
  if (sources.empty()) return;
  try {
    Fill();
  } catch (...) {
    EndSpan();
    throw;
  }
}

void StepReferrers::BeginSpan(std::uint32_t first) {
  std::uint64_t const limit = std::min<std::uint64_t>(std::max(LEAST_KEPT, KEPT * counts.size()), UINT32_MAX);
  spanBegin = first;
  spanEnd = first;
  std::uint64_t total = 0;
  while (spanEnd < counts.size() && (spanEnd == first || total + counts[spanEnd] <= limit)) {
    total += std::exchange(counts[spanEnd++], static_cast<std::uint32_t>(total));
  }
  sources.resize(total);
}

// Gives the counts back their meaning.
void StepReferrers::EndSpan() {
  for (std::uint32_t target = spanBegin; target < spanEnd; ++target) counts[target] = EndOf(target) - counts[target];
  spanEnd = spanBegin;
}

// Each pair once. A file that has changed has others than were counted: no more than those are kept.
void StepReferrers::Fill() {
  std::vector<std::uint32_t> places(counts.begin() + spanBegin, counts.begin() + spanEnd);
  walk([&](std::uint32_t source, std::uint32_t target) {
    if (target < spanBegin || target >= spanEnd) return;
    std::uint32_t& place = places[target - spanBegin];
    if (place != counts[target] && sources[place - 1] == source) return;
    if (place == EndOf(target)) FailChanged();
    sources[place++] = source;
  });
  for (std::uint32_t target = spanBegin; target < spanEnd; ++target) {
    if (places[target - spanBegin] != EndOf(target)) FailChanged();
  }
}
