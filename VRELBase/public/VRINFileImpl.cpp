#include "VRINFileImpl.h"

#include "VRELFilePath.h"

VRINFileImpl::VRINFileImpl(int descriptor) : VRINObjectImpl("VRINFile"), file(new VRELFile(descriptor)) {}

VRINFileImpl::VRINFileImpl(VRELFilePath const& path) : VRINObjectImpl("VRINFile"), file(new VRELFile(path)) {}

VRINResult VRINFileImpl::GetPath(VRELFilePath& path) const {
  return file->GetFilePath(path);
}

bool VRINFileImpl::HasPath() const {
  VRELFilePath path;
  return GetPath(path) == VREL_S_OK;
}
