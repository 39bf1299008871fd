// One instance of a STEP file.
#pragma once

#include <cstdint>

#include "VRELEntityReader.h"

// Holds where its records begin, and little more: a document has one for each instance, and they are what its memory
// grows with. The bytes are read from the file each time.
class StepEntityReader final : public VRELEntityReader {
 public:
  // The type of an instance that cannot be read, or was not yet.
  static constexpr std::uint32_t NO_TYPE = 0x7FFF;

  // The buffer is a StepBuffer. The number is that of StepIds for the id, the place that behind the "=".
  StepEntityReader(VRELBufferHandle& source, std::uint64_t idNumber, unsigned long place, long lineThere);

  // Reads the records and notes their type; the document's visitors see nothing. Fails, with a warning, where they
  // break the format.
  VRINResult ReadEntity() override;
  // VREL_E_FAIL for an id that an int does not hold.
  VRINResult GetEntityId(int& id) const override;
  VRELString GetEntityType() const override;

  unsigned long Offset() const noexcept { return offset; }
  // From the line 4294967295 on it is that one.
  long Line() const noexcept { return line; }
  std::uint32_t Type() const noexcept { return type; }
  // The number is below NO_TYPE.
  void SetType(std::uint32_t typeNumber, bool hasEscapes) noexcept {
    type = typeNumber;
    escapes = hasEscapes;
  }
  // Whether a text of the instance holds escapes.
  bool HasEscapes() const noexcept { return escapes; }
  std::uint64_t Number() const noexcept {
    return std::uint64_t(highHalf) << 32U | static_cast<std::uint32_t>(entityId);
  }
  bool IsRead() const noexcept { return type != NO_TYPE; }

 private:
  // Eight bytes more would cost sixteen. The lower half of the number is the base's id.
  std::uint64_t const offset : 48;
  std::uint64_t type : 15;
  std::uint64_t escapes : 1;
  std::uint32_t const line;
  std::uint32_t const highHalf;
};
