#include "StepEntityReader.h"

#include <algorithm>
#include <climits>

#include "StepBuffer.h"
#include "StepFormatReader.h"
#include "StepTypes.h"

namespace {

StepFormatReader& DocumentOf(VRELBufferHandle const& buffer) {
  return static_cast<StepBuffer*>(buffer.GetInstance())->Document();
}

// All types beyond the limit together have one more number.
static_assert(StepTypes::kLimit < StepEntityReader::kNoType);

}  // namespace

StepEntityReader::StepEntityReader(VRELBufferHandle& source, std::uint64_t idNumber, unsigned long position,
                                   long lineNumber)
    : VRELEntityReader(source),
      offset(position),
      type(kNoType),
      escapes(0),
      line(static_cast<std::uint32_t>(std::min<long>(lineNumber, UINT32_MAX))),
      highHalf(static_cast<std::uint32_t>(idNumber >> 32U)) {
  entityId = static_cast<int>(static_cast<std::uint32_t>(idNumber));
}

VRINResult StepEntityReader::ReadEntity() {
  return DocumentOf(buffer).ReadInstance(*this);
}

VRINResult StepEntityReader::GetEntityId(int& id) const {
  if (Number() > INT_MAX) return VREL_E_FAIL;
  return VRELEntityReader::GetEntityId(id);
}

VRELString StepEntityReader::GetEntityType() const {
  return VRELString(IsRead() ? DocumentOf(buffer).GetTypeName(Type()) : std::string());
}
