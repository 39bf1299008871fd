// Implementation object of VRINFile.
#pragma once

#include "VRELExport.h"
#include "VRELFileHandle.h"
#include "VRINObjectImpl.h"
#include "VRINResult.h"

class VRELFilePath;

// Holds the VRELFile of a public file handle.
class VREL_EXPORT VRINFileImpl : public VRINObjectImpl {
 public:
  VRINFileImpl(int descriptor);
  VRINFileImpl(VRELFilePath const& path);

  // Copies the path out.
  // Errors: VREL_E_FAIL, with `path` unchanged, if the file has no path.
  VRINResult GetPath(VRELFilePath& path) const;
  // Returns true if GetPath succeeds.
  bool HasPath() const;
  VRELFileHandle GetFile() const { return file; }

 private:
  VRELFileHandle file;
};
