// References between the instances of a STEP file.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "StepBuffer.h"
#include "StepContents.h"
#include "StepIds.h"
#include "StepLines.h"
#include "StepReferrers.h"
#include "StepScanner.h"

// Index in both directions: from a reference to its instance, and from an instance to those that refer to it.
class StepReferences {
 public:
  // Called for a reference to nothing, which is the current token of the scanner.
  using OnDangling = std::function<void(std::uint32_t source)>;
  // Called for an instance whose id the earlier instance `first` has.
  using OnDuplicate = std::function<void(std::uint32_t instance, std::uint32_t first)>;

  // Ownership: nothing is owned.
  StepReferences(StepContents const& instances, StepBuffer& bytes, StepScanner& tokens, StepLines& instanceLines);

  // Adds the next instance; `number` is that of StepIds.
  void Add(std::uint64_t number) { ids.Add(number); }
  // Counts an instance that was read. The others are not part of the index.
  void CountRead() noexcept { ++readCount; }
  void RemoveRead() noexcept { --readCount; }
  // Builds the index of ids alone, unless it exists. Of instances with the same id it contains the first.
  void IndexIds();
  // Adds an id that a REFERENCE section defines.
  void AddExternal(DocumentVisitor::Id const& id);

  // Builds both indexes, with one pass over the file. Called again after an exception, it begins again.
  void Build(OnDuplicate const& onDuplicate, OnDangling const& onDangling);
  bool IsBuilt() const noexcept { return referrers != nullptr; }

  // Sets the ordinal of the id. Returns whether the document defines it.
  bool Resolve(DocumentVisitor::Id& id) const;

  // Returns instances, counted from 0, whose ids ascend by one; the length may be 0.
  StepIds::Run const& LongestRun() const noexcept { return ids.LongestRun(); }
  // Returns the ordinal of an id that fits, or 0.
  std::uint32_t OrdinalOf(std::int64_t number) const {
    DocumentVisitor::Id id;
    id.number = number;
    std::uint32_t const instance = ids.Find(id);
    return instance == StepIds::kNone ? 0 : instance + 1;
  }

  // Returns the id of an instance; its digits are stored in `digits`.
  DocumentVisitor::Id IdAt(std::uint32_t instance, std::string& digits, std::size_t limit = StepIds::kAllDigits) const;
  // Returns the id for a message: "#12".
  std::string NameAt(std::uint32_t instance) const;
  // Returns the same for a number of StepIds.
  std::string NameOf(std::uint64_t number) const;
  // Requires: IsBuilt.
  StepReferrers::Range ReferrersOf(std::uint32_t instance) { return referrers->Of(instance); }

 private:
  bool IsExternal(DocumentVisitor::Id const& id) const;
  std::string DigitsAt(std::uint64_t offset, std::size_t limit) const;
  void ReadReferences(StepReferrers::Note const& note);
  bool FindTargets(char const* at, std::size_t limit);

  StepContents const& contents;
  StepBuffer& buffer;
  StepScanner& scanner;
  StepLines& lines;
  StepIds ids;
  std::uint32_t readCount = 0;
  std::vector<std::uint32_t> targets;  // of the present instance; a member so that its memory is reused
  std::vector<std::string> externals;  // sorted by Build
  bool isIndexed = false;
  std::unique_ptr<StepReferrers> referrers;
};
