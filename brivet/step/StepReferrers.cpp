// Inversion by counting, in spans. One pass over all references counts the referrers of each target. Targets are then
// handled in spans of consecutive instances whose referrers fit into memory together: the counts of a span are replaced
// by their running sums, which are the positions of each target's first referrer, and another pass places the sources
// (a distribution sort; Knuth, The Art of Computer Programming 3, 5.2). Ending a span turns the positions back into
// counts. Sources ascend, so that a repeated pair follows the first one directly and needs no set to be found.
#include "StepReferrers.h"

#include <algorithm>
#include <utility>

#include "InputError.h"

namespace {

constexpr std::uint32_t kNoSource = UINT32_MAX;

[[noreturn]] void FailChanged() {
  throw InputError{VREL_E_INVALID_FILE, 0, "the references are not those that were counted"};
}

}  // namespace

StepReferrers::StepReferrers(std::uint32_t instances, Traversal allReferences, std::uint64_t kept)
    : traverse(std::move(allReferences)),
      limit(std::min<std::uint64_t>(std::max({kept, kLeastKept, kKeptEach * instances}), UINT32_MAX)),
      counts(instances, 0) {
  Count();
}

void StepReferrers::Count() {
  std::vector<std::uint32_t> lastSource(counts.size(), kNoSource);
  traverse([&](std::uint32_t source, std::uint32_t target) {
    if (std::exchange(lastSource[target], source) != source) ++counts[target];
  });
}

StepReferrers::Range StepReferrers::Of(std::uint32_t target) {
  if (target < spanBegin || target >= spanEnd) Collect(target);
  return {sources.data() + counts[target], sources.data() + EndOf(target)};
}

// Returns the position after the last referrer of an instance of the span.
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
  spanBegin = first;
  spanEnd = first;
  std::uint64_t total = 0;
  while (spanEnd < counts.size() && (spanEnd == first || total + counts[spanEnd] <= limit)) {
    total += std::exchange(counts[spanEnd++], static_cast<std::uint32_t>(total));
  }
  sources.resize(total);
}

// Turns the positions into counts again.
void StepReferrers::EndSpan() {
  for (std::uint32_t target = spanBegin; target < spanEnd; ++target) counts[target] = EndOf(target) - counts[target];
  spanEnd = spanBegin;
}

// Places each pair once. A file that was changed may have more than were counted; those would not fit.
void StepReferrers::Fill() {
  std::vector<std::uint32_t> positions(counts.begin() + spanBegin, counts.begin() + spanEnd);
  traverse([&](std::uint32_t source, std::uint32_t target) {
    if (target < spanBegin || target >= spanEnd) return;
    std::uint32_t& position = positions[target - spanBegin];
    if (position != counts[target] && sources[position - 1] == source) return;
    if (position == EndOf(target)) FailChanged();
    sources[position++] = source;
  });
  for (std::uint32_t target = spanBegin; target < spanEnd; ++target) {
    if (positions[target - spanBegin] != EndOf(target)) FailChanged();
  }
}
