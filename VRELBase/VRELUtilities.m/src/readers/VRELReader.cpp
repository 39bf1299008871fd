#include "VRELReader.h"

#include <utility>

#include "VRELEntityReader.h"
#include "VRELSectionReader.h"

VRELReader::VRELReader(VRELFormatReaderHandle reader) : formatReader(std::move(reader)) {}

VRELReader::~VRELReader() = default;

// Section traversal
// =================
//
// Both traversals start with the result for a document without sections, and set the result to VREL_E_READER_NO_ENTITY
// at each section. They differ in what they do with the result of an entity: the header combines it by &=, which keeps
// the worse of the two, while the data assigns it, so that the last entity counts. Only the data has hooks before the
// reading. An entity that fails never ends a traversal.

VRINResult VRELReader::ReadHeaderSection() {
  if (!formatReader.IsValid()) return VREL_E_READER_NO_FORMAT;
  VRINResult result = VREL_E_READER_NO_HEADER;
  while (VRELSectionReader* const section = formatReader->GetNextHeaderSection()) {
    result = VREL_E_READER_NO_ENTITY;
    while (VRELEntityReader* const entity = section->GetNextKey()) result &= entity->ReadEntity();
  }
  return result;
}

VRINResult VRELReader::ReadDataSection() {
  if (!formatReader.IsValid()) return VREL_E_READER_NO_FORMAT;
  VRINResult result = VREL_E_READER_NO_DATA;
  formatReader->PreprocessData();
  while (VRELSectionReader* const section = formatReader->GetNextDataSection()) {
    result = VREL_E_READER_NO_ENTITY;
    section->PreProcess(formatReader);
    while (VRELEntityReader* const entity = section->GetNextKey()) result = entity->ReadEntity();
  }
  return result;
}

VRINResult VRELReader::Resolve() {
  return formatReader.IsValid() ? formatReader->Resolve() : VRINResult(VREL_E_READER_NO_FORMAT);
}

VRELDynamicArray<VRELEntityReader*> VRELReader::GetHeaderEntityList() {
  return formatReader.IsValid() ? formatReader->GetHeaderEntityList() : VRELDynamicArray<VRELEntityReader*>();
}

VRELDynamicArray<VRELEntityReader*> VRELReader::GetDataEntityList() {
  return formatReader.IsValid() ? formatReader->GetDataEntityList() : VRELDynamicArray<VRELEntityReader*>();
}
