#include "StepReferrers.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::uint32_t NOBODY = UINT32_MAX;
constexpr std::uint64_t LEAST_KEPT = 1024;

}  // namespace

StepReferrers::StepReferrers(std::uint32_t instances, Walk allReferences)
    : walk(std::move(allReferences)), counts(instances, 0) {
  WalkOnce(0, instances, [this](std::uint32_t, std::uint32_t target) { ++counts[target]; });
}

StepReferrers::Range StepReferrers::Of(std::uint32_t target) {
  if (target < spanBegin || target >= spanEnd) Collect(target);
  std::uint32_t const end = ends[target - spanBegin];
  return {sources.data() + (end - counts[target]), sources.data() + end};
}

void StepReferrers::Collect(std::uint32_t first) {
  std::uint64_t const limit = std::max<std::uint64_t>(LEAST_KEPT, std::uint64_t(KEPT) * counts.size());
  spanBegin = first;
  spanEnd = first;
  std::uint64_t total = 0;
  while (spanEnd < counts.size() && (spanEnd == first || total + counts[spanEnd] <= limit)) total += counts[spanEnd++];

  // `ends` runs from the begin of each instance's places to their end.
  sources.resize(total);
  ends.clear();
  std::uint32_t begin = 0;
  for (std::uint32_t target = spanBegin; target < spanEnd; ++target) {
    ends.push_back(begin);
    begin += counts[target];
  }
  if (total == 0) return;
  WalkOnce(spanBegin, spanEnd,
           [this](std::uint32_t source, std::uint32_t target) { sources[ends[target - spanBegin]++] = source; });
}

// The references to a span of instances, each pair once.
void StepReferrers::WalkOnce(std::uint32_t first, std::uint32_t last, Note const& note) const {
  std::vector<std::uint32_t> lastSource(last - first, NOBODY);
  walk([&](std::uint32_t source, std::uint32_t target) {
    if (target < first || target >= last || lastSource[target - first] == source) return;
    lastSource[target - first] = source;
    note(source, target);
  });
}
