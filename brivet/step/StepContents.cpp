#include "StepContents.h"

#include <algorithm>

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

StepContents::DataSection const& StepContents::SectionOf(std::uint32_t instance) const {
  auto const isBefore = [](std::uint32_t wanted, DataSection const& each) { return wanted < each.first; };
  return *(std::upper_bound(data.begin(), data.end(), instance, isBefore) - 1);
}

std::uint32_t StepContents::FirstAfter(unsigned long offset) const {
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
  return low;
}

unsigned long StepContents::BeginAfter(unsigned long offset) const {
  std::uint32_t const instance = FirstAfter(offset);
  return instance < count ? At(instance).Offset() : ~0UL;
}
