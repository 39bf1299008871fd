#include "StepSections.h"

#include <algorithm>
#include <climits>

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
  if (entity == nullptr) return nullptr;
  if (entityList.size() == reserved) ReserveMore();
  entityList.add(entity);
  return entity;
}

// Grows the list by what the rest of the file probably has, but by no more than the list itself would: then little
// memory is unused at the end, and none is taken for instances that do not follow.
void StepDataSection::ReserveMore() {
  long const size = entityList.size();
  long const more = std::clamp<long>(document.EstimateRest(size), size / 16 + 64, size / 2 + 64);
  reserved = static_cast<int>(std::min<long>(size + more, INT_MAX));
  entityList.reserve(reserved);
}
