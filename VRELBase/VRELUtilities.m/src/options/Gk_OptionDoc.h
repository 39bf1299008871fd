// Operations on the options of the folder tree.
#pragma once

#include <string>
#include <string_view>

#include "Gk_ROString.h"
#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELString.h"

class Gk_Option;
class VRELOptions;
class VRELRoloNode;

// Entry points to the process-wide options, which are addressed by the path of a folder and a name, and copies between
// them and the option store. New code uses VRELOptions.
//
//   Gk_OptionDoc::addOption(L"step/reader/tolerance", 0.01);
//   Gk_Option* const tolerance = Gk_OptionDoc::fetchOption(L"step/reader/tolerance");
//
// Ownership: options live until the process exits.
// Thread safety: none.
class VREL_EXPORT Gk_OptionDoc {
 public:
  // Returns the option of that path, or null.
  static Gk_Option* fetchOption(VRELString const& path);

  // Set the value of an option, which is made if it is missing, and return it. A value of another kind is refused as by
  // VRELOption::SetValue. The remark is ignored.
  static Gk_Option* addOption(VRELString const& path, VRELString const& value, char const* remark = nullptr);
  static Gk_Option* addOption(VRELString const& path, bool value, char const* remark = nullptr);
  static Gk_Option* addOption(VRELString const& path, double value, char const* remark = nullptr);
  static Gk_Option* addOption(VRELString const& path, int value, char const* remark = nullptr);
  // Take a string: a C string in the default codepage of the process, a wide string, or UTF-8. Null is the empty
  // string.
  static Gk_Option* addOption(VRELString const& path, char const* value, char const* remark = nullptr) {
    return addOption(path, VRELString(value), remark);
  }
  static Gk_Option* addOption(VRELString const& path, wchar_t const* value, char const* remark = nullptr) {
    return addOption(path, VRELString(value), remark);
  }
  static Gk_Option* addOption(VRELString const& path, std::string const& value, char const* remark = nullptr) {
    return addOption(path, VRELString(value), remark);
  }
  static Gk_Option* addOption(VRELString const& path, std::string_view value, char const* remark = nullptr) {
    return addOption(path, std::string(value), remark);
  }
  // Other pointers would convert to bool.
  template <class T>
  static Gk_Option* addOption(VRELString const& path, T const* value, char const* remark = nullptr) = delete;

  // Compatibility: always returns an empty array.
  static VRELDynamicArray<Gk_Option*> fetchOptions(Gk_ROString const& path);

  // Adds the options of a folder and of the folders below it to a store, by GetAllOptionsUnderNode with an empty path.
  // The path of a folder inside another one ends in "/".
  // Compatibility: if the folder does not exist, the deepest existing folder of its path is used, or the root.
  static void FetchAllComponentOptions(Gk_ROString const& folder, VRELOptions& store);

  // Copies the values of the options of the folder `source` to the options with the same relative path in `target`, if
  // these exist and are of the same kind. Makes no options.
  static void SynchOptionsBetweenComponents(VRELString const& source, VRELString const& target);
};

// Adds the options of a node and of all nodes below it to a store. An unset option is skipped; the current value
// becomes the default value in the store. The name is `path`, the folders below the node and the name of the option,
// separated by "/"; only dots in it separate tokens. A "/" is appended to `path` first, which the caller sees. A null
// node adds nothing.
VREL_EXPORT void GetAllOptionsUnderNode(VRELRoloNode* node, VRELString& path, VRELOptions& store);
