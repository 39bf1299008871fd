// The way into the folder tree.
#pragma once

#include "VRELExport.h"

class Gk_ROString;
class VRELRoloNode;

class VREL_EXPORT VRELRoloTraits {
 public:
  // The deepest folder of the tree under Gk_Nest::fetchRoot() to which the path leads, whose start moves behind what is
  // used up; a leading "/" counts for nothing. The root where the path leads nowhere, and for a null path. With
  // `create` folders are made for what is left. With `leaf` what stands behind the last "/" is the name of something in
  // the folder: no folder is looked for or made.
  static VRELRoloNode* fetch(Gk_ROString* path, bool create, bool leaf);
};
