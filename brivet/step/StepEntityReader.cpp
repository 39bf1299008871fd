#include "StepEntityReader.h"

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

VRINResult StepEntityReader::ReadEntity() {
  return DocumentOf(buffer).ReadInstance(*this);
}

VRINResult StepEntityReader::GetEntityId(int& id) const {
  if (isLarge != 0 || entityId < 0) return VREL_E_FAIL;
  return VRELEntityReader::GetEntityId(id);
}

VRELString StepEntityReader::GetEntityType() const {
  return VRELString(IsRead() ? DocumentOf(buffer).GetTypeName(Type()) : std::string());
}
