#include "VRELRoloNode.h"

#include <memory>
#include <string_view>

#include "VRELAllocException.h"

// Collects all descendants first and deletes each without its children, so that destructors do not nest. If memory runs
// out, a node keeps its children and deletes them itself.
VRELRoloNode::~VRELRoloNode() {
  VRELDynamicArray<VRELRoloNode*> descendants = children;
  for (int i = 0; i < descendants.size(); ++i) {
    VRELRoloNode* const node = descendants[i];
    if (node == nullptr) continue;
    try {
      descendants.append(node->children);
    } catch (VRELAllocException const&) {
      continue;
    }
    node->children.clear();
  }
  for (VRELRoloNode* node : descendants) delete node;
}

bool VRELRoloNode::matchNode(Gk_ROString* path) const {
  if (path == nullptr) return false;
  int const taken = path->matchPathString(value.rwString());
  if (taken < 0) return false;
  path->offset(taken);
  return true;
}

VRELRoloNode* VRELRoloNode::findChildNode(Gk_ROString* path, bool leaf) {
  VRELRoloNode* node = this;
  while (VRELRoloNode* const child = node->matchingChild(path)) {
    node = child;
    std::string_view const rest = path->text();
    if (rest.empty()) break;
    if (leaf && rest.find('/') == std::string_view::npos) break;
  }
  return node;
}

VRELRoloNode* VRELRoloNode::createNode(Gk_ROString* path, bool leaf) {
  if (path == nullptr) return nullptr;
  VRELRoloNode* last = nullptr;
  std::string_view rest = path->text();
  while (true) {
    std::size_t const slash = rest.find('/');
    bool const isLast = slash == std::string_view::npos;
    if (rest.empty() || slash == 0 || (isLast && leaf)) return last;
    last = (last != nullptr ? last : this)->addChild(rest.substr(0, slash));
    std::size_t const taken = isLast ? rest.size() : slash + 1;
    rest.remove_prefix(taken);
    path->offset(static_cast<int>(taken));
  }
}

VRELRoloNode* VRELRoloNode::newNode() const {
  return new VRELRoloNode();
}

// Returns the first child that matches the path, and moves the path past it; null if there is none.
VRELRoloNode* VRELRoloNode::matchingChild(Gk_ROString* path) const {
  for (VRELRoloNode* child : children) {
    if (child != nullptr && child->matchNode(path)) return child;
  }
  return nullptr;
}

VRELRoloNode* VRELRoloNode::addChild(std::string_view segment) {
  std::unique_ptr<VRELRoloNode> child(newNode());
  child->value = Gk_String(Gk_ROString(segment.data(), static_cast<int>(segment.size())));
  children.add(child.get());
  return child.release();
}
