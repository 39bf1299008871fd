// A tree of the segments of paths.
#pragma once

#include <string_view>

#include "Gk_ROString.h"
#include "Gk_String.h"
#include "VRELDynamicArray.h"
#include "VRELExport.h"

// A node for one segment of a path, with the nodes of the segments that may follow. It owns its children, and deletes
// them with itself; a tree may be as deep as memory allows.
//
// A path is given as a view whose start moves forward over each segment that is used up, its "/" included, so that the
// caller sees what is left:
//
//   Gk_ROString path("component/group/name");
//   VRELRoloNode* node = root.findChildNode(&path, true);
//   if (VRELRoloNode* const made = node->createNode(&path, true)) node = made;  // the node of "group"; left is "name"
class VREL_EXPORT VRELRoloNode {
 public:
  VRELRoloNode() = default;
  VRELRoloNode(VRELRoloNode const&) = delete;
  VRELRoloNode& operator=(VRELRoloNode const&) = delete;
  virtual ~VRELRoloNode();

  Gk_String const& getValue() const noexcept { return value; }
  // Takes a copy that shares nothing.
  void setValue(Gk_String const& segment) { value = segment.copy(); }

  VRELDynamicArray<VRELRoloNode*>& getChildren() noexcept { return children; }
  VRELDynamicArray<VRELRoloNode*> const& getChildren() const noexcept { return children; }

  // Whether the path begins with this node's segment, as Gk_ROString::matchPathString has it; if so the view moves
  // behind it. False for null.
  bool matchNode(Gk_ROString* path) const;

  // Goes down as far as children match the path, the first that does on each level, and gives the node where that
  // ends: this node at the worst. With `leaf` set what is left behind the last "/" is the name of a leaf and is not
  // gone into. Null children are passed over.
  VRELRoloNode* findChildNode(Gk_ROString* path, bool leaf);

  // Makes a child for the first segment of the path, a child of that for the second, and so on, and returns the last
  // one made. With `leaf` set what is left behind the last "/" is the name of a leaf, and makes none. An empty segment
  // ends it. Null if no node was made, and for a null path.
  VRELRoloNode* createNode(Gk_ROString* path, bool leaf);

 protected:
  // The nodes that createNode makes. A derived class gives nodes of its own kind.
  virtual VRELRoloNode* newNode() const;

 private:
  VRELRoloNode* matchingChild(Gk_ROString* path) const;
  VRELRoloNode* addChild(std::string_view segment);

  Gk_String value;
  VRELDynamicArray<VRELRoloNode*> children;
};
