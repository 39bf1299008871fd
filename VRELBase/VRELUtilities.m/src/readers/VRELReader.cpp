#include "VRELReader.h"

#include <utility>

#include "VRELEntityReader.h"
#include "VRELSectionReader.h"

VRELReader::VRELReader(VRELFormatReaderHandle reader) : formatReader(std::move(reader)) {}

VRELReader::~VRELReader() = default;

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
