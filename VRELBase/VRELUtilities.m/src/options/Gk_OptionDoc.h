// The options of the process in the folder tree, and the bridge from there to the option store.
#pragma once

#include "Gk_ROString.h"
#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELString.h"

class Gk_Option;
class VRELOptions;
class VRELRoloNode;

// An option is reached by the path of its folder and its name: "component/group/name".
//
//   Gk_OptionDoc::addOption(L"step/reader/tolerance", 0.01, nullptr);
//   Gk_Option* const tolerance = Gk_OptionDoc::fetchOption(L"step/reader/tolerance");
//
// The options live until the exit of the process. A wide or narrow literal would be taken for a bool as a value: wrap
// it in a VRELString.
class VREL_EXPORT Gk_OptionDoc {
 public:
  // Null where there is no such option.
  static Gk_Option* fetchOption(VRELString const& path);

  // Set the value of the option, which is made where it is missing, and return it. A value of another kind than the
  // option has is refused as VRELOption::SetValue does. The remark counts for nothing.
  static Gk_Option* addOption(VRELString const& path, VRELString const& value, char const* remark = nullptr);
  static Gk_Option* addOption(VRELString const& path, bool value, char const* remark = nullptr);
  static Gk_Option* addOption(VRELString const& path, double value, char const* remark = nullptr);
  static Gk_Option* addOption(VRELString const& path, int value, char const* remark = nullptr);

  // That there are never any is promised.
  static VRELDynamicArray<Gk_Option*> fetchOptions(Gk_ROString const& path);

  // Adds the options of a folder and of those below it by GetAllOptionsUnderNode with an empty path. A folder that lies
  // in another one is named with a "/" at its end. That the deepest folder that exists stands for one that does not,
  // and the root for one that begins so, is promised.
  static void FetchAllComponentOptions(Gk_ROString const& folder, VRELOptions& store);

  // Gives each option of the target's folder the value that the option of the same path has in the source's, where
  // both are there and the kinds agree. Makes no option.
  static void SynchOptionsBetweenComponents(VRELString const& source, VRELString const& target);
};

// Adds the options of a node, and of all below it, to the store: each that has a value, by its current value, which
// becomes the default there. The names begin with the path, to whose end a "/" is put first, which the caller sees;
// they go on with the folders below the node and the option's name, all with "/" between, and dots alone divide them in
// the store. Null adds nothing.
VREL_EXPORT void GetAllOptionsUnderNode(VRELRoloNode* node, VRELString& path, VRELOptions& store);
