#include "StepContents.h"

#include <algorithm>

#include "StepEntityReader.h"
#include "StepSections.h"

StepContents::Section& StepContents::Add(Kind kind, std::string const& keyword) {
  if (kind == Kind::Data) data.push_back({count, nullptr});
  sections.emplace_back();
  Section& section = sections.back();
  section.kind = kind;
  section.keyword = keyword;
  section.first = count;
  section.end = count;
  return section;
}

StepEntityReader& StepContents::At(std::uint32_t instance) const {
  auto section = data.begin();
  // Most documents have one data section.
  if (data.size() > 1) {
    auto const isBefore = [](std::uint32_t wanted, DataSection const& each) { return wanted < each.first; };
    section = std::upper_bound(data.begin(), data.end(), instance, isBefore) - 1;
  }
  return section->entities->At(instance - section->first);
}

unsigned long StepContents::EndOf(std::uint32_t instance) const {
  return instance + 1 < count ? At(instance + 1).Offset() : ~0UL;
}

unsigned long StepContents::BeginAfter(unsigned long offset) const {
  std::uint32_t low = 0;
  std::uint32_t high = count;
  while (low < high) {
    std::uint32_t const middle = low + (high - low) / 2;
    if (At(middle).Offset() > offset) {
      high = middle;
    } else {
      low = middle + 1;
    }
  }
  return low < count ? At(low).Offset() : ~0UL;
}
