#include "VRELTree.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>

using Node = VRELTree::VRELTreeNode;

namespace {

// Calls visit(node) for the start and each node of the walk from it, until it returns false.
template <class Visit>
void Walk(Node* start, Visit visit) {
  Node::VRELTreeNodeIterator walk(start);
  for (Node* node = start; node != nullptr; node = walk.GetNextNode()) {
    if (!visit(*node)) return;
  }
}

int CountFrom(Node* start) {
  int count = 0;
  Walk(start, [&](Node&) { return ++count > 0; });
  return count;
}

// The object of a node as it is printed.
int Printed(Node const* node) {
  return node == nullptr ? 0 : static_cast<int>(reinterpret_cast<std::intptr_t>(node->GetObjectPtr()));
}

void PrintObjects(VRELDynamicArray<Node*> const& nodes) {
  for (Node const* node : nodes) std::printf("%d ", Printed(node));
}

void RemoveAll(VRELDynamicArray<Node*>& nodes, Node const* node) {
  auto* const kept = std::remove(nodes.begin(), nodes.end(), node);
  nodes.endShrink(static_cast<int>(nodes.end() - kept));
}

}  // namespace

VRELTree::VRELTree(void* object) : root(new VRELTreeNode(object)) {}

VRELTree::~VRELTree() {
  try {
    delete root;
  } catch (...) {
  }
}

void VRELTree::SetRoot(void* object) noexcept {
  if (root != nullptr) root->SetObjectPtr(object);
}

int VRELTree::GetChildCount() const {
  return CountFrom(root);
}

int VRELTree::GetChildCount(void* object) const {
  Node* found = nullptr;
  Walk(root, [&](Node& node) {
    if (node.GetObjectPtr() == object) found = &node;
    return found == nullptr;
  });
  return CountFrom(found);
}

VRINResult VRELTree::Find(void* key, bool (*match)(void*, void*), VRELDynamicArray<VRELTreeNode*>* out) const {
  if (match == nullptr || out == nullptr) return VREL_E_INVALID_ARGUMENT;
  Walk(root, [=](Node& node) {
    if (match(key, node.GetObjectPtr())) out->add(&node);
    return true;
  });
  return out->size() > 0 ? VREL_S_OK : VREL_S_NO_ENTITY;
}

void VRELTree::Dump() const {
  if (root == nullptr) {
    std::printf("No Root Node found.");
    return;
  }
  Walk(root, [](Node& node) {
    std::printf("\n%d # Parents %d: ", Printed(&node), node.GetParents().size());
    PrintObjects(node.GetParents());
    std::printf("\n%d # Children %d: ", Printed(&node), node.GetChildren().size());
    PrintObjects(node.GetChildren());
    std::printf("\n");
    return true;
  });
}

// What is left to delete while the destructor of a node runs, the next one at the end. The nodes below are deleted from
// one loop, in the order in which nested calls would go.
struct VRELTree::VRELTreeNode::Orphans {
  std::vector<VRELTreeNode*> waiting;
  // The one that the loop deletes just now.
  VRELTreeNode* dying = nullptr;
};

VRELTree::VRELTreeNode::~VRELTreeNode() noexcept(false) {
  try {
    LeaveNeighbours();
    if (orphans == nullptr) {
      DeleteChildren();
    } else {
      // A destructor of the client was quicker than the loop.
      if (orphans->dying != this) std::replace(orphans->waiting.begin(), orphans->waiting.end(), this, {});
      HandOverChildren(*orphans);
    }
  } catch (...) {
  }
}

void VRELTree::VRELTreeNode::LeaveNeighbours() {
  for (VRELTreeNode* parent : parents) {
    if (parent == nullptr) continue;
    RemoveAll(parent->children, this);
    auto& names = parent->namedBy;
    names.erase(std::remove(names.begin(), names.end(), this), names.end());
  }
  for (VRELTreeNode* node : namedBy) RemoveAll(node->parents, this);
}

void VRELTree::VRELTreeNode::DeleteChildren() {
  Orphans left;
  try {
    HandOverChildren(left);
  } catch (...) {
    // Out of memory: those that were handed over still go, the rest stay behind.
  }
  while (!left.waiting.empty()) {
    left.dying = left.waiting.back();
    left.waiting.pop_back();
    try {
      delete left.dying;
    } catch (...) {
    }
  }
}

void VRELTree::VRELTreeNode::HandOverChildren(Orphans& heir) {
  for (int i = children.size() - 1; i >= 0; --i) {
    VRELTreeNode* const child = children[i];
    if (child == nullptr || child == this || child->orphans != nullptr) continue;
    heir.waiting.push_back(child);
    child->orphans = &heir;
  }
}

VRELTree::VRELTreeNode* VRELTree::VRELTreeNode::AddChild(void* childObject) {
  if (childObject == nullptr) return nullptr;
  auto child = std::make_unique<VRELTreeNode>(childObject);
  AddChildPtr(child.get());
  return child.release();
}

// Both take the first step back when there is no memory for the second: half a link would outlive its node.
void VRELTree::VRELTreeNode::AddChildPtr(VRELTreeNode* node) {
  children.add(node);
  if (node == nullptr) return;
  try {
    node->AddParent(this);
  } catch (...) {
    children.endShrink(1);
    throw;
  }
}

void VRELTree::VRELTreeNode::AddParent(VRELTreeNode* node) {
  parents.add(node);
  if (node == nullptr) return;
  try {
    node->namedBy.push_back(this);
  } catch (...) {
    parents.endShrink(1);
    throw;
  }
}

VRELTree::VRELTreeNode::VRELTreeNodeIterator::~VRELTreeNodeIterator() = default;

VRELTree::VRELTreeNode* VRELTree::VRELTreeNode::VRELTreeNodeIterator::GetNextNode() {
  if (current == nullptr) return nullptr;
  int index = NextUnvisitedChild(0);
  while (index < 0) {
    if (stack.IsEmpty()) {
      current = nullptr;
      return nullptr;
    }
    int const taken = static_cast<int>(reinterpret_cast<std::intptr_t>(stack.GetTop()));
    stack.Pop();
    current = static_cast<VRELTreeNode*>(stack.GetTop());
    stack.Pop();
    index = NextUnvisitedChild(taken + 1);
  }
  Descend(index);
  return current;
}

// To a child of the current node; where memory runs out the walk stays where it is.
void VRELTree::VRELTreeNode::VRELTreeNodeIterator::Descend(int index) {
  VRELTreeNode* const child = current->children[index];
  int const depth = stack.GetSize();
  try {
    stack.Push(current);
    stack.Push(reinterpret_cast<void*>(static_cast<std::intptr_t>(index)));
    visited.Add(child);
  } catch (...) {
    while (stack.GetSize() > depth) stack.Pop();
    throw;
  }
  current = child;
}

void* VRELTree::VRELTreeNode::VRELTreeNodeIterator::GetNextObject() {
  GetNextNode();
  return GetCurrentObject();
}

void VRELTree::VRELTreeNode::VRELTreeNodeIterator::Clear() {
  visited.Clear();
  stack.Clear();
}

// The index, from `first` on, of a child of the current node that was not visited; -1 if there is none.
int VRELTree::VRELTreeNode::VRELTreeNodeIterator::NextUnvisitedChild(int first) const {
  for (int i = first; i < current->children.size(); ++i) {
    if (!visited.Get(current->children[i])) return i;
  }
  return -1;
}
