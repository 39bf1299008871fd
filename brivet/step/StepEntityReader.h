// Instance of a STEP file.
#pragma once

#include <cstddef>
#include <cstdint>

#include "StepEntityPool.h"
#include "VRELEntityReader.h"

// Stores where the records of the instance begin, and little more: a document has one object for each instance, and
// these objects are most of its memory. The bytes are read from the file each time.
class StepEntityReader final : public VRELEntityReader {
 public:
  // The type of an instance that was not read or cannot be read.
  static constexpr std::uint32_t kNoType = 0x7FFF;

  // How the number of StepIds is stored: itself, or its place in StepContents if it does not fit.
  struct Id {
    std::uint32_t number;
    bool isLarge;
  };

  // `source` is a StepBuffer, `position` the offset after the "=".
  StepEntityReader(VRELBufferHandle& source, Id id, unsigned long position)
      : VRELEntityReader(source),
        offset(position & kLargestOffset),
        isLarge(id.isLarge ? 1 : 0),
        type(kNoType),
        escapes(0) {
    entityId = static_cast<int>(id.number);
  }

  // Only created in a pool, which frees the memory.
  static void* operator new(std::size_t size, StepEntityPool& pool) { return pool.Allocate(size); }
  static void operator delete(void* /*memory*/, StepEntityPool& /*pool*/) noexcept {}
  static void operator delete(void* /*memory*/) noexcept {}

  // Reads the records and stores their type; they are not passed to a visitor.
  // Errors: a failure, after a report, for a syntax error.
  VRINResult ReadEntity() override;
  // Errors: VREL_E_FAIL for an id that does not fit into an int.
  VRINResult GetEntityId(int& id) const override;
  VRELString GetEntityType() const override;

  unsigned long Offset() const noexcept { return offset; }
  std::uint32_t Type() const noexcept { return type; }
  // Requires: typeNumber < kNoType.
  void SetType(std::uint32_t typeNumber, bool hasEscapes) noexcept {
    type = typeNumber & kNoType;
    escapes = hasEscapes;
  }
  void SetUnread() noexcept { SetType(kNoType, false); }
  // Returns whether a string of the instance has escapes.
  bool HasEscapes() const noexcept { return escapes; }
  // Returns how the number is stored. StepContents::NumberOf returns the number.
  Id StoredId() const noexcept { return {static_cast<std::uint32_t>(entityId), isLarge != 0}; }
  bool IsRead() const noexcept { return type != kNoType; }

 private:
  static constexpr std::uint64_t kLargestOffset = 0x7FFFFFFFFFFF;  // 128 TiB

  // Bit fields, because there is an object for each instance. The number is the id of the base class.
  std::uint64_t const offset : 47;
  std::uint64_t const isLarge : 1;
  std::uint64_t type : 15;
  std::uint64_t escapes : 1;
};
