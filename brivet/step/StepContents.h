// Sections and instances of a STEP file.
#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "StepEntityReader.h"
#include "StepScanner.h"
#include "StepSections.h"

// Table of contents: where each part of the file begins. The parts themselves are read again for each description.
class StepContents {
 public:
  enum class Kind { Data, Entries, Lines };
  struct Section {
    Kind kind = Kind::Data;
    std::string keyword;      // of a section that contains no instances: ANCHOR, REFERENCE, SIGNATURE
    std::uint32_t first = 0;  // its first instance, counted through the document
    std::uint32_t end = 0;    // the instance after its last one
    bool hasParameters = false;
    StepScanner::Position begin;                 // of the parameters or the lines
    std::vector<StepScanner::Position> entries;  // of ANCHOR and REFERENCE
  };

  Section& Add(Kind kind, std::string const& keyword = "");
  // Sets the object that owns the instances of the last section, which is a data section.
  void SetEntities(StepDataSection* section) { data.back().entities = section; }
  // Adds an instance to the last section.
  void AddInstance() { sections.back().end = ++count; }

  std::vector<Section> const& Sections() const noexcept { return sections; }
  Section& Last() { return sections.back(); }
  long DataSectionCount() const noexcept { return static_cast<long>(data.size()); }
  // Returns how an instance stores a number of StepIds, which is kept here if it does not fit.
  StepEntityReader::Id StoreNumber(std::uint64_t number) {
    if (number <= UINT32_MAX) return {static_cast<std::uint32_t>(number), false};
    largeNumbers.push_back(number);
    return {static_cast<std::uint32_t>(largeNumbers.size() - 1), true};
  }
  // Returns that number.
  std::uint64_t NumberOf(StepEntityReader const& entity) const {
    StepEntityReader::Id const id = entity.StoredId();
    return id.isLarge ? largeNumbers[id.number] : id.number;
  }
  // Returns the number of instances, including those that could not be read.
  std::uint32_t Count() const noexcept { return count; }
  StepEntityReader& At(std::uint32_t instance) const {
    // Most documents have one data section.
    DataSection const& section = data.size() == 1 ? data.front() : SectionOf(instance);
    return section.entities->At(instance - section.first);
  }
  // Calls take(instance, entity) for instances from `first` to before `end`.
  template <class Receiver>
  void ForEach(std::uint32_t first, std::uint32_t end, Receiver const& take) const {
    while (first < end) {
      DataSection const& section = SectionOf(first);
      std::uint32_t const sectionEnd = std::min(end, SectionEnd(section));
      for (; first < sectionEnd; ++first) take(first, section.entities->At(first - section.first));
    }
  }
  // Returns the offset at which an instance ends at the latest, where the next one begins; the largest number for the
  // last instance.
  unsigned long EndOf(std::uint32_t instance) const { return instance + 1 < count ? At(instance + 1).Offset() : ~0UL; }
  // Returns the offset of the first instance that begins after an offset; the largest number if there is none.
  unsigned long BeginAfter(unsigned long offset) const;
  // Returns the instance that begins at an offset, counted from 0. Requires: there is one.
  std::uint32_t IndexOf(unsigned long offset) const { return FirstAfter(offset) - 1; }

 private:
  std::vector<Section> sections;
  // Where the instances are. Apart from the sections, because it is read for each reference.
  struct DataSection {
    std::uint32_t first;
    StepDataSection* entities;
  };
  DataSection const& SectionOf(std::uint32_t instance) const;
  std::uint32_t SectionEnd(DataSection const& section) const noexcept {
    return &section == &data.back() ? count : (&section + 1)->first;
  }
  // Returns the first instance that begins after an offset; Count if there is none.
  std::uint32_t FirstAfter(unsigned long offset) const;

  std::vector<DataSection> data;
  std::deque<std::uint64_t> largeNumbers;  // grows without free capacity
  std::uint32_t count = 0;
};
