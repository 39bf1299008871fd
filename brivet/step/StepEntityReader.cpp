#include "StepEntityReader.h"

#include "StepBuffer.h"
#include "StepFormatReader.h"

namespace {

StepFormatReader& DocumentOf(VRELBufferHandle const& buffer) {
  return static_cast<StepBuffer*>(buffer.GetInstance())->Document();
}

}  // namespace

StepEntityReader::StepEntityReader(VRELBufferHandle& source, int number, unsigned long place, long lineThere)
    : VRELEntityReader(source), offset(place), line(static_cast<std::uint32_t>(lineThere)) {
  entityId = number;
}

VRINResult StepEntityReader::ReadEntity() {
  return DocumentOf(buffer).ReadInstance(*this);
}

VRINResult StepEntityReader::GetEntityId(int& id) const {
  if (entityId < 0) return VREL_E_FAIL;
  return VRELEntityReader::GetEntityId(id);
}

VRELString StepEntityReader::GetEntityType() const {
  return VRELString(IsRead() ? DocumentOf(buffer).GetTypeName(Type()) : std::string());
}
