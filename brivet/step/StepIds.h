// Index from instance ids to instances.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "DocumentVisitor.h"

// Instances are added in the order of the document, then indexed, then found. An instance stores its number itself (see
// StepEntityReader): its id or, if that does not fit, the offset of its digits in the file. Ids of any length therefore
// take no more memory than others.
//
// Memory: less than 6 bytes per instance; none if the ids ascend by one from instance to instance, with few exceptions.
class StepIds {
 public:
  static constexpr std::uint32_t kNone = UINT32_MAX;
  static constexpr std::size_t kAllDigits = SIZE_MAX;
  // Returned by `NumberAt` for an instance that is not part of the index.
  static constexpr std::uint64_t kLeftOut = UINT64_MAX;

  // Returns the number that an instance, counted from 0, stores.
  using NumberAt = std::function<std::uint64_t(std::uint32_t instance)>;
  // Returns up to `limit` digits at an offset of the file, where an id begins without its leading zeros.
  using DigitsAt = std::function<std::string(std::uint64_t offset, std::size_t limit)>;

  // Consecutive instances whose ids ascend by one.
  struct Run {
    std::uint64_t id = 0;  // of the first one
    std::uint32_t instance = 0;
    std::uint32_t length = 0;
  };

  StepIds(NumberAt numbers, DigitsAt digits);

  // Returns the number for an id whose first digit, after leading zeros, is at `offset`.
  static std::uint64_t NumberOf(DocumentVisitor::Id const& id, std::uint64_t offset);
  // Adds the next instance.
  // Requires: fewer than kNone instances.
  void Add(std::uint64_t number) {
    if (number == nextNumber && hasAllRuns) {
      ++runs.back().length;
      ++nextNumber;
      ++count;
    } else {
      AddOther(number);
    }
  }
  std::uint32_t Count() const noexcept { return count; }

  // Returns the id for a number. Its digits, at most `limit` of those that do not fit, are stored in `digits`.
  DocumentVisitor::Id IdOf(std::uint64_t number, std::string& digits, std::size_t limit = kAllDigits) const;

  // Builds the index of the instances that are not left out, of which there are `indexed`. Calls `onDuplicate(i,
  // first)`, in the order of instances, for each instance whose id an earlier one has; the index contains the first
  // one.
  void Index(std::uint32_t indexed, std::function<void(std::uint32_t, std::uint32_t)> const& onDuplicate);

  // Returns the longest run if ids are found by runs, otherwise an empty one.
  Run const& LongestRun() const noexcept { return longest; }

  // Returns the instance of an id, from 0, or kNone; kNone before Index.
  std::uint32_t Find(DocumentVisitor::Id const& id) const {
    // Converted, the -1 of an id that does not fit is above all slots and runs.
    auto const number = static_cast<std::uint64_t>(id.number);
    if (form == Form::Runs) {
      std::uint64_t const place = number - longest.id;
      return place < longest.length ? longest.instance + static_cast<std::uint32_t>(place) : FindInRuns(number);
    }
    if (form == Form::Hashed) return index.empty() ? kNone : index[SlotOf(id)];
    return number < index.size() ? index[number] : kNone;
  }

 private:
  static constexpr std::size_t kRunLimit = 64;

  void AddOther(std::uint64_t number);
  // Returns the highest number that was added.
  std::uint64_t Highest() const noexcept;
  // Returns whether runs are all that is needed, and sorts them.
  bool HasRuns();
  std::uint32_t FindInRuns(std::uint64_t number) const;
  // Returns whether the ids are so close to each other that they can be used as slots.
  bool IsDense() const;
  bool IsSame(std::uint64_t number, DocumentVisitor::Id const& id) const;
  std::size_t SlotOf(DocumentVisitor::Id const& id) const;

  NumberAt const numberAt;
  DigitsAt const digitsAt;
  std::uint64_t const seed;
  std::uint32_t count = 0;
  std::uint64_t highest = 0;              // apart from those of runs
  std::uint64_t nextNumber = UINT64_MAX;  // that continues the last run
  std::vector<Run> runs;  // in the order of instances until they are indexed; those beyond kRunLimit are left out
  bool hasAllRuns = true;
  Run longest;
  enum class Form { Hashed, Dense, Runs };
  Form form = Form::Hashed;
  std::vector<std::uint32_t> index;  // instances, at their ids or, hashed with linear probing, at the next free slot
};
