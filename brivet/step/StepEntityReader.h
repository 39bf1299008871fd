// One instance of a STEP file.
#pragma once

#include <cstdint>

#include "VRELEntityReader.h"

// Holds where its records begin, and little more: a document has one for each instance, and they are what its memory
// grows with. The bytes are read from the file each time.
class StepEntityReader final : public VRELEntityReader {
 public:
  // The type of an instance that cannot be read, or was not yet.
  static constexpr std::uint32_t NO_TYPE = UINT32_MAX;

  // The buffer is a StepBuffer. The place is that behind the "=". A number below 0 stands for an id that the document
  // keeps elsewhere, since it does not fit.
  StepEntityReader(VRELBufferHandle& source, int number, unsigned long place, long lineThere);

  // Reads the records and notes their type; the document's visitors see nothing. Fails, with a warning, where they
  // break the format.
  VRINResult ReadEntity() override;
  // VREL_E_FAIL for an id that does not fit.
  VRINResult GetEntityId(int& id) const override;
  VRELString GetEntityType() const override;

  unsigned long Offset() const noexcept { return offset; }
  long Line() const noexcept { return line; }
  std::uint32_t Type() const noexcept { return IsRead() ? type & ~ESCAPES : NO_TYPE; }
  // The number is below 2^31.
  void SetType(std::uint32_t number, bool hasEscapes) noexcept { type = hasEscapes ? number | ESCAPES : number; }
  // Whether a text of the instance holds escapes.
  bool HasEscapes() const noexcept { return IsRead() && (type & ESCAPES) != 0; }
  int Number() const noexcept { return entityId; }
  bool IsRead() const noexcept { return type != NO_TYPE; }

 private:
  static constexpr std::uint32_t ESCAPES = 1U << 31U;  // marks a type

  unsigned long offset;
  std::uint32_t line;
  std::uint32_t type = NO_TYPE;
};
