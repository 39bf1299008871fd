#include "VRELFormatReader.h"

#include "VRELSectionReader.h"

namespace {

VRELDynamicArray<VRELEntityReader*> EntitiesOf(VRELDynamicArray<VRELSectionReader*> const& sections) {
  VRELDynamicArray<VRELEntityReader*> entities;
  for (VRELSectionReader* const section : sections) {
    if (section != nullptr) entities.append(section->GetEntityList());
  }
  return entities;
}

}  // namespace

VRELFormatReader::VRELFormatReader(VRELFileHandle const& document) : file(document) {}

VRELFormatReader::~VRELFormatReader() {
  headerSections.clear();
  dataSections.clear();
}

VRELSectionReader* VRELFormatReader::GetNext(VRELDynamicArray<VRELSectionReader*>& sections, int& next) const {
  return buffer.IsValid() && next < sections.size() ? sections[next++] : nullptr;
}

VRELSectionReader* VRELFormatReader::GetNextHeaderSection() {
  return GetNext(headerSections, nextHeaderSection);
}

VRELSectionReader* VRELFormatReader::GetNextDataSection() {
  return GetNext(dataSections, nextDataSection);
}

VRINResult VRELFormatReader::PreprocessData() {
  return VREL_E_NOT_IMPLEMENTED;
}

VRINResult VRELFormatReader::Resolve() {
  return VREL_E_NOT_IMPLEMENTED;
}

VRELDynamicArray<VRELEntityReader*> VRELFormatReader::GetDataEntityList() {
  return GetDataEntityList(dataSections);
}

VRELDynamicArray<VRELEntityReader*> VRELFormatReader::GetHeaderEntityList() {
  return GetHeaderEntityList(headerSections);
}

VRELDynamicArray<VRELEntityReader*> VRELFormatReader::GetDataEntityList(
    VRELDynamicArray<VRELSectionReader*>& sections) {
  return EntitiesOf(sections);
}

VRELDynamicArray<VRELEntityReader*> VRELFormatReader::GetHeaderEntityList(
    VRELDynamicArray<VRELSectionReader*>& sections) {
  return EntitiesOf(sections);
}
