#include "VRINFile.h"

#include "VRELFilePath.h"
#include "VRELString.h"
#include "VRINFileImpl.h"

VRINFile::VRINFile(char const* path) : VRINObject("VRINFile") {
  if (path != nullptr) SetPath(VRELFilePath(path));
}

VRINFile::VRINFile(wchar_t const* path) : VRINObject("VRINFile") {
  if (path != nullptr) SetPath(VRELFilePath(VRELString(path)));
}

VRINFile::VRINFile(int descriptor) : VRINObject("VRINFile") {
  SetImpl(new VRINFileImpl(descriptor));
}

VRINFile::VRINFile(std::FILE const* stream, char const*) : VRINObject("VRINFile") {
  if (stream != nullptr) SetImpl(new VRINFileImpl(fileno(const_cast<std::FILE*>(stream))));
}

void VRINFile::SetPath(VRELFilePath const& path) {
  SetImpl(new VRINFileImpl(path));
}
