// What stands behind the public files.
#pragma once

#include "VRELExport.h"
#include "VRELFileHandle.h"
#include "VRINObjectImpl.h"
#include "VRINResult.h"

class VRELFilePath;

// Holds a file.
class VREL_EXPORT VRINFileImpl : public VRINObjectImpl {
 public:
  VRINFileImpl(int descriptor);
  VRINFileImpl(VRELFilePath const& path);

  // VREL_E_FAIL, with the argument as it was, for a file without a path.
  VRINResult GetPath(VRELFilePath& path) const;
  bool HasPath() const;
  VRELFileHandle GetFile() const { return file; }

 private:
  VRELFileHandle file;
};
