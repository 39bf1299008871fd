#include "VRELSectionReader.h"

#include <utility>

VRELSectionReader::VRELSectionReader(VRELBufferHandle source) : buffer(std::move(source)) {}

VRELSectionReader::~VRELSectionReader() {
  entityList.clear();
}

VRELEntityReader* VRELSectionReader::GetNextKey() {
  return nextEntity < entityList.size() ? entityList[nextEntity++] : nullptr;
}

VRINResult VRELSectionReader::PreProcess(VRELFormatReader* /*reader*/) {
  return VREL_E_NOT_IMPLEMENTED;
}
