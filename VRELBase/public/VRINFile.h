// Public handle of a file.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <type_traits>

#include "VRELExport.h"
#include "VRINObject.h"

class VRELFilePath;

// File given by its path or by an open descriptor. It opens and closes nothing.
//
//   VRINFile const model("wheel.step");
//   VRINFile const standardInput(stdin, nullptr);
//   if (!model.IsValid()) ...  // a null path
//
// Ownership: a descriptor or stream remains the caller's.
class VREL_EXPORT VRINFile : public VRINObject {
 public:
  // Creates a file from a path in the default codepage of the process, or in wide characters. A null path creates an
  // invalid handle.
  VRINFile(char const* path);
  VRINFile(wchar_t const* path);
  // Equivalent to the constructors above. The path ends at the first zero character.
  VRINFile(std::string const& path) : VRINFile(path.c_str()) {}
  VRINFile(std::string_view path) : VRINFile(std::string(path)) {}
  VRINFile(std::wstring const& path) : VRINFile(path.c_str()) {}
  VRINFile(std::wstring_view path) : VRINFile(std::wstring(path)) {}
  // Creates a file from a descriptor. The descriptor is not checked: the handle is always valid.
  VRINFile(int descriptor);
  // Creates a file from the descriptor of an open stream. A null stream creates an invalid handle.
  //
  // Compatibility: the second argument is ignored.
  VRINFile(std::FILE const* stream, char const* unused);
  // A boolean is no descriptor.
  template <class Flag, class = std::enable_if_t<std::is_same_v<Flag, bool>>>
  VRINFile(Flag) = delete;

 private:
  void SetPath(VRELFilePath const& path);
};
