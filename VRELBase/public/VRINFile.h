// The file that an application hands to the library.
#pragma once

#include <cstdio>

#include "VRELExport.h"
#include "VRINObject.h"

class VRELFilePath;

// Names a file by its path or by an open descriptor; opens nothing and closes nothing.
//
//   VRINFile const model("wheel.step");
//   VRINFile const standardInput(stdin, nullptr);
class VREL_EXPORT VRINFile : public VRINObject {
 public:
  // A path in the process's default codepage, and in wide characters; null makes an invalid handle.
  VRINFile(char const* path);
  VRINFile(wchar_t const* path);
  // A descriptor, which is not looked at: the handle is always valid.
  VRINFile(int descriptor);
  // The descriptor of an open stream; null makes an invalid handle. That the second argument is not used is promised.
  VRINFile(std::FILE const* stream, char const* unused);

 private:
  void SetPath(VRELFilePath const& path);
};
