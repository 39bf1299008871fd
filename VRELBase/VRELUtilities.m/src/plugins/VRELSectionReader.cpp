#include "VRELSectionReader.h"

VRELSectionReader::VRELSectionReader(VRELBufferHandle source) : buffer(source) {}

VRELSectionReader::~VRELSectionReader() {
  entityList.clear();
}

VRELEntityReader* VRELSectionReader::GetNextKey() {
  return nextEntity < entityList.size() ? entityList[nextEntity++] : nullptr;
}

VRINResult VRELSectionReader::PreProcess(VRELFormatReader* /*reader*/) {
  return VREL_E_NOT_IMPLEMENTED;
}
