// Tree of path segments.
#pragma once

#include <string_view>

#include "Gk_ROString.h"
#include "Gk_String.h"
#include "VRELDynamicArray.h"
#include "VRELExport.h"

// Node for one segment of a path, with a child for each segment that may follow. It is the base of the folders that
// hold option documents and observables.
//
// A path is passed as a view. Its start moves past each segment that is used, the "/" included, so that the caller
// finds the rest in it:
//
//   Gk_ROString path("component/group/name");
//   VRELRoloNode* node = root.findChildNode(&path, true);
//   if (VRELRoloNode* const added = node->createNode(&path, true)) node = added;  // node of "group"; path reads "name"
//
// Ownership: a node owns its children and deletes them iteratively, so that the depth of a tree is limited by memory
// only.
class VREL_EXPORT VRELRoloNode {
 public:
  VRELRoloNode() = default;
  VRELRoloNode(VRELRoloNode const&) = delete;
  VRELRoloNode& operator=(VRELRoloNode const&) = delete;
  virtual ~VRELRoloNode();

  // Returns the segment of this node.
  Gk_String const& getValue() const noexcept { return value; }
  // Sets the segment to an independent copy.
  void setValue(Gk_String const& segment) { value = segment.copy(); }

  VRELDynamicArray<VRELRoloNode*>& getChildren() noexcept { return children; }
  VRELDynamicArray<VRELRoloNode*> const& getChildren() const noexcept { return children; }

  // Returns whether the path begins with the segment of this node, by Gk_ROString::matchPathString, and if so moves the
  // view past it. False for null.
  bool matchNode(Gk_ROString* path) const;

  // Descends to the first matching child on each level, as far as children match, and returns the last node; this node
  // if none matches. With `leaf` set, the part after the last "/" is the name of a leaf and is not searched for. Null
  // children are skipped.
  VRELRoloNode* findChildNode(Gk_ROString* path, bool leaf);

  // Adds a child for the first segment of the path, a child of that node for the second, and so on, up to an empty
  // segment. Returns the last node added; null if there is none or the path is null. With `leaf` set, the part after
  // the last "/" is the name of a leaf and gets no node.
  VRELRoloNode* createNode(Gk_ROString* path, bool leaf);

 protected:
  // Creates the nodes of createNode. A derived class returns nodes of its own type.
  virtual VRELRoloNode* newNode() const;

  // Do the same as matchNode and findChildNode for a path without a zero byte, and remove what they use from its start.
  bool matchSegment(std::string_view& rest) const;
  VRELRoloNode* findDescendant(std::string_view& rest, bool leaf);

 private:
  VRELRoloNode* matchingChild(std::string_view& rest) const;
  VRELRoloNode* addChild(std::string_view segment);

  Gk_String value;
  VRELDynamicArray<VRELRoloNode*> children;
};
