#include "VRELBuffer.h"

VRELBuffer::VRELBuffer(VRELFileHandle const& source) : file(source) {}

VRELBuffer::~VRELBuffer() {
  handler = nullptr;
}

VRINResult VRELBuffer::IsValid() {
  return VREL_E_FAIL;
}

VRINResult VRELBuffer::ReadString(VRELString& /*text*/, int /*length*/) {
  return VREL_E_FAIL;
}

VRINResult VRELBuffer::ReadChar(char& /*value*/) {
  return VREL_E_FAIL;
}

VRINResult VRELBuffer::ReadUChar(unsigned char& /*value*/) {
  return VREL_E_FAIL;
}

VRINResult VRELBuffer::ReadWideChar(wchar_t& /*value*/) {
  return VREL_E_FAIL;
}

VRINResult VRELBuffer::ReadShort(short& /*value*/) {
  return VREL_E_FAIL;
}

VRINResult VRELBuffer::ReadInt(int& /*value*/) {
  return VREL_E_FAIL;
}

VRINResult VRELBuffer::ReadUInt(unsigned int& /*value*/) {
  return VREL_E_FAIL;
}

VRINResult VRELBuffer::ReadDouble(double& /*value*/) {
  return VREL_E_FAIL;
}

VRINResult VRELBuffer::ReadLong(long& /*value*/) {
  return VREL_E_FAIL;
}

VRINResult VRELBuffer::ReadULong(unsigned long& /*value*/) {
  return VREL_E_FAIL;
}

VRINResult VRELBuffer::ReadLine(VRELString& /*line*/) {
  return VREL_E_FAIL;
}

VRINResult VRELBuffer::SetOffset(unsigned long /*offset*/) {
  return VREL_E_FAIL;
}

VRINResult VRELBuffer::GetOffset(unsigned long& /*offset*/) {
  return VREL_E_FAIL;
}
