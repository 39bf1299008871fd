#include "VRELRoloTraits.h"

#include "Gk_Nest.h"
#include "VRELRoloNode.h"

VRELRoloNode* VRELRoloTraits::fetch(Gk_ROString* path, bool create, bool leaf) {
  Gk_Nest& root = Gk_Nest::fetchRoot();
  if (path == nullptr) return &root;
  root.matchNode(path);
  VRELRoloNode* const found = root.findChildNode(path, leaf);
  if (!create) return found;
  VRELRoloNode* const made = found->createNode(path, leaf);
  return made != nullptr ? made : found;
}
