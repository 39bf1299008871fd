// Which instance an id names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "DocumentVisitor.h"

// Told of the instances of a document in their order, then indexed, then asked. An instance keeps its number itself
// (see StepEntityReader): its id, or, where that does not fit, where in the file its digits stand, so that ids of any
// length take no more memory than others.
//
// The index takes less than 6 bytes an instance.
class StepIds {
 public:
  static constexpr std::uint32_t NONE = UINT32_MAX;
  // What `NumberAt` gives for an instance that does not count.
  static constexpr std::uint64_t LEFT_OUT = UINT64_MAX;

  // The number that an instance, counted from 0 on, keeps.
  using NumberAt = std::function<std::uint64_t(std::uint32_t instance)>;
  // The digits of the id that begins at a place of the file, without zeros in front.
  using DigitsAt = std::function<std::string(std::uint64_t place)>;

  StepIds(NumberAt numbers, DigitsAt digits);

  // The number for an id whose name begins at a place of the file.
  static std::uint64_t NumberOf(DocumentVisitor::Id const& id, std::uint64_t place);
  // Counts the next instance. There are fewer than NONE.
  void Add(std::uint64_t number);
  std::uint32_t Count() const noexcept { return count; }

  // The id behind a number; the digits are kept in the text.
  DocumentVisitor::Id IdOf(std::uint64_t number, std::string& digits) const;

  // Makes the index. `twice(i, first)` is told, in the order of instances, of each one whose id an earlier one has; the
  // first one serves.
  void Index(std::function<void(std::uint32_t, std::uint32_t)> const& twice);

  // The instance of an id, from 0 on, or NONE; NONE without an index, too.
  std::uint32_t Find(DocumentVisitor::Id const& id) const;

 private:
  // Ids lie so close to each other that they serve as places.
  bool IsDense() const;
  bool IsSame(std::uint64_t number, DocumentVisitor::Id const& id) const;
  std::size_t PlaceOf(DocumentVisitor::Id const& id) const;

  NumberAt const numberAt;
  DigitsAt const digitsAt;
  std::uint64_t const seed;  // nobody who makes a file can know it: no ids are bad ones for the index
  std::uint32_t count = 0;
  std::uint64_t highest = 0;
  bool dense = false;
  std::vector<std::uint32_t> index;  // instances, at their ids or, hashed, at the next free place
};
