#include "VRELEntityReader.h"

VRELEntityReader::VRELEntityReader(VRELBufferHandle& source) : buffer(source) {}

VRELEntityReader::~VRELEntityReader() = default;

VRINResult VRELEntityReader::Proprocess(VRELSectionReader* /*section*/) {
  return VREL_E_NOT_IMPLEMENTED;
}

VRINResult VRELEntityReader::GetEntityId(int& id) const {
  id = entityId;
  return VREL_S_OK;
}

VRELString VRELEntityReader::GetEntityType() const {
  return VRELString();
}

bool VRELEntityReader::IsEntityRoot() const {
  return entityRoot;
}
