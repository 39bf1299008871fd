#include "VRELRoloNode.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include "VRELAllocException.h"
#include "VRELMatchPathSegment.h"

namespace {

// Returns false only if a segment does not match a path whose first segment has `end` bytes. A matching one ends at a
// "/" or at the end of the path, so that its length is `end` unless it contains a "/" itself. Rejects the other
// children of a folder by one or two bytes.
bool MayMatch(Gk_String const& segment, std::string_view path, std::size_t end) {
  auto const size = static_cast<std::size_t>(segment.len());
  char const* const bytes = segment.begin();
  if (size > 0 && bytes[0] == '/') return true;
  if (size < end || (end > 0 && bytes[end - 1] != path[end - 1])) return false;
  return size == end || bytes[end] == '\0' || bytes[end] == '/';
}

}  // namespace

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
  std::string_view const text = path->text();
  std::string_view rest = text;
  if (!matchSegment(rest)) return false;
  path->offset(static_cast<int>(text.size() - rest.size()));
  return true;
}

VRELRoloNode* VRELRoloNode::findChildNode(Gk_ROString* path, bool leaf) {
  if (path == nullptr) return this;
  std::string_view const text = path->text();
  std::string_view rest = text;
  VRELRoloNode* const node = findDescendant(rest, leaf);
  path->offset(static_cast<int>(text.size() - rest.size()));
  return node;
}

bool VRELRoloNode::matchSegment(std::string_view& rest) const {
  int const taken = VRELMatchPathSegment(rest, value.text());
  if (taken < 0) return false;
  rest.remove_prefix(static_cast<std::size_t>(taken));
  return true;
}

VRELRoloNode* VRELRoloNode::findDescendant(std::string_view& rest, bool leaf) {
  VRELRoloNode* node = this;
  while (VRELRoloNode* const child = node->matchingChild(rest)) {
    node = child;
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

// Returns the first child that matches the start of `rest`, and removes what it takes; null if there is none.
VRELRoloNode* VRELRoloNode::matchingChild(std::string_view& rest) const {
  std::size_t const end = std::min(rest.find('/'), rest.size());
  for (VRELRoloNode* child : children) {
    if (child != nullptr && MayMatch(child->value, rest, end) && child->matchSegment(rest)) return child;
  }
  return nullptr;
}

VRELRoloNode* VRELRoloNode::addChild(std::string_view segment) {
  std::unique_ptr<VRELRoloNode> child(newNode());
  child->value = Gk_String(Gk_ROString(segment.data(), static_cast<int>(segment.size())));
  children.add(child.get());
  return child.release();
}
