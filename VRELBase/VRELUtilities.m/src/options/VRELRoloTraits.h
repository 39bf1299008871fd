// Path resolution in the folder tree.
#pragma once

#include "VRELExport.h"

class Gk_ROString;
class VRELRoloNode;

// Resolves paths in the tree of Gk_Nest::fetchRoot(). Gk_Nest::fetch is the typed form.
class VREL_EXPORT VRELRoloTraits {
 public:
  // Returns the deepest existing folder of a path, and moves the start of `path` past the part that was resolved. A
  // leading "/" is ignored. Returns the root if no folder matches, and for a null path.
  //
  // With `create`, folders are made for the rest of the path. With `leaf`, the part after the last "/" names an item in
  // the folder, and is neither searched nor made as a folder.
  //
  //   Gk_ROString path(text);  // "reader/step/tolerance"
  //   VRELRoloNode* folder = VRELRoloTraits::fetch(&path, true, true);  // reader/step; path is "tolerance"
  static VRELRoloNode* fetch(Gk_ROString* path, bool create, bool leaf);
};
