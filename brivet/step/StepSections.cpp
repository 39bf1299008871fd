#include "StepSections.h"

#include "StepEntityReader.h"
#include "StepFormatReader.h"

namespace {

void DeleteAll(VRELDynamicArray<VRELEntityReader*>& entities) {
  for (VRELEntityReader* entity : entities) delete entity;
}

}  // namespace

VRINResult StepHeaderEntity::ReadEntity() {
  return document.ReadHeaderEntity(begin);
}

StepHeaderSection::StepHeaderSection(VRELBufferHandle const& source, StepFormatReader& owner)
    : VRELSectionReader(source), document(owner) {}

StepHeaderSection::~StepHeaderSection() {
  DeleteAll(entityList);
}

VRELEntityReader* StepHeaderSection::GetNextKey() {
  VRELEntityReader* const entity = document.ReadNextHeaderEntity();
  if (entity != nullptr) entityList.add(entity);
  return entity;
}

StepDataSection::StepDataSection(VRELBufferHandle const& source, StepFormatReader& owner)
    : VRELSectionReader(source), document(owner) {}

StepDataSection::~StepDataSection() {
  DeleteAll(entityList);
}

VRELEntityReader* StepDataSection::GetNextKey() {
  VRELEntityReader* const entity = document.ReadNextInstance();
  if (entity != nullptr) entityList.add(entity);
  return entity;
}
