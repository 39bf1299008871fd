// A traversal visits a graph, not only a tree: a set of visited nodes keeps it from returning to a node that has
// several parents. It is iterative, with the path of (node, child index) pairs on a stack of the iterator.
//
// Deletion is iterative as well. The first destructor collects its children in a list of pending deletions and deletes
// from there; the destructors of those nodes add their children to the same list instead of deleting them. A pending
// node stores its list, so that a node with several parents is added once, and a node that a client's destructor
// deletes in between is removed.
#include "VRELTree.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

using Node = VRELTree::VRELTreeNode;

namespace {

// Calls visit(node) for the start and each node that is reached from it, until it returns false.
template <class Visit>
void Traverse(Node* start, Visit visit) {
  Node::VRELTreeNodeIterator iterator(start);
  for (Node* node = start; node != nullptr; node = iterator.GetNextNode()) {
    if (!visit(*node)) return;
  }
}

// The visited nodes of a traversal during which no object changes: a VRELHashList<Node*> that stores each object next
// to its node, so that a search reads no other node. Slots, growth and so the nodes that count as equal are those of
// the list (see VRELHashTable.h).
class VisitedNodes {
 public:
  VisitedNodes() { rows.endGrow(kFirstSlots); }

  // Returns false if the node counts as visited, otherwise marks it.
  bool Visit(Node* node) {
    Row const row = {node, node->GetObjectPtr()};
    int slot = FindVacant(rows, row);
    if (slot < 0) return false;
    if (count + 1 > static_cast<double>(kLoadFactor) * rows.size()) {
      Rehash();
      slot = FindVacant(rows, row);
      // Equal to a node of another probe run before.
      if (slot < 0) return true;
    }
    rows[slot] = row;
    ++count;
    return true;
  }

 private:
  struct Row {
    Node* node;  // null if the slot is vacant
    void* object;
  };

  static constexpr int kFirstSlots = 17;
  static constexpr float kLoadFactor = 0.75F;

  // Returns the slot for a node, or -1 if an equal one is in its probe run.
  static int FindVacant(VRELDynamicArray<Row> const& where, Row const& row) {
    auto const slots = static_cast<unsigned int>(where.size());
    Row const* const all = where.getArray();
    auto slot = static_cast<int>(VRELHashTraits<Node*>::Hash(row.node) % slots);
    for (; all[slot].node != nullptr; slot = slot + 1 == static_cast<int>(slots) ? 0 : slot + 1) {
      if (all[slot].object == row.object) return -1;
    }
    return slot;
  }

  // Drops a node that has become equal to another one; it is still counted.
  void Rehash() {
    VRELDynamicArray<Row> fresh;
    fresh.endGrow(2 * rows.size());
    for (Row const& row : rows) {
      int const slot = row.node != nullptr ? FindVacant(fresh, row) : -1;
      if (slot >= 0) fresh[slot] = row;
    }
    rows = std::move(fresh);
  }

  VRELDynamicArray<Row> rows;
  int count = 0;
};

// Does the same as Traverse, if `visit` changes neither nodes nor objects. Several times as fast.
template <class Visit>
void TraverseUnchanged(Node* start, Visit visit) {
  if (start == nullptr || !visit(*start)) return;
  struct Step {
    VRELDynamicArray<Node*> const* children;
    int next;
  };
  VisitedNodes visited;
  std::vector<Step> path = {{&start->GetChildren(), 0}};
  while (!path.empty()) {
    Step& step = path.back();
    if (step.next == step.children->size()) {
      path.pop_back();
      continue;
    }
    Node* const child = (*step.children)[step.next++];
    if (child == nullptr) return;
    if (!visited.Visit(child)) continue;
    if (!visit(*child)) return;
    if (child->GetChildren().size() > 0) path.push_back({&child->GetChildren(), 0});
  }
}

int CountFrom(Node* start) {
  int count = 0;
  TraverseUnchanged(start, [&](Node&) { return ++count > 0; });
  return count;
}

// Returns the object of a node as Dump prints it.
int PrintedObject(Node const* node) {
  return node == nullptr ? 0 : static_cast<int>(reinterpret_cast<std::intptr_t>(node->GetObjectPtr()));
}

void PrintObjects(VRELDynamicArray<Node*> const& nodes) {
  for (Node const* node : nodes) std::printf("%d ", PrintedObject(node));
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

VRELTree& VRELTree::operator=(VRELTree&& other) noexcept {
  VRELTree old(std::move(*this));
  // A self-assignment stores the root again.
  root = std::exchange(&other == this ? old.root : other.root, nullptr);
  return *this;
}

void VRELTree::SetRoot(void* object) noexcept {
  if (root != nullptr) root->SetObjectPtr(object);
}

int VRELTree::GetChildCount() const {
  return CountFrom(root);
}

int VRELTree::GetChildCount(void* object) const {
  Node* found = nullptr;
  TraverseUnchanged(root, [&](Node& node) {
    if (node.GetObjectPtr() == object) found = &node;
    return found == nullptr;
  });
  return CountFrom(found);
}

VRINResult VRELTree::Find(void* key, bool (*match)(void*, void*), VRELDynamicArray<VRELTreeNode*>* out) const {
  if (match == nullptr || out == nullptr) return VREL_E_INVALID_ARGUMENT;
  Traverse(root, [=](Node& node) {
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
  Traverse(root, [](Node& node) {
    std::printf("\n%d # Parents %d: ", PrintedObject(&node), node.GetParents().size());
    PrintObjects(node.GetParents());
    std::printf("\n%d # Children %d: ", PrintedObject(&node), node.GetChildren().size());
    PrintObjects(node.GetChildren());
    std::printf("\n");
    return true;
  });
}

// Nodes that the destructor of an ancestor is about to delete, the next one at the end, which is the order of nested
// calls.
struct VRELTree::VRELTreeNode::PendingDeletions {
  std::vector<VRELTreeNode*> nodes;
  // The node that is being deleted now.
  VRELTreeNode* current = nullptr;
};

VRELTree::VRELTreeNode::~VRELTreeNode() noexcept(false) {
  try {
    UnlinkFromNeighbours();
    if (pending == nullptr) {
      DeleteDescendants();
    } else {
      // A client's destructor has deleted this node before its turn.
      if (pending->current != this) std::replace(pending->nodes.begin(), pending->nodes.end(), this, {});
      AddChildrenTo(*pending);
    }
  } catch (...) {
  }
}

void VRELTree::VRELTreeNode::UnlinkFromNeighbours() {
  for (VRELTreeNode* parent : parents) {
    if (parent == nullptr) continue;
    RemoveAll(parent->children, this);
    auto& links = parent->parentOf;
    links.erase(std::remove(links.begin(), links.end(), this), links.end());
  }
  for (VRELTreeNode* node : parentOf) RemoveAll(node->parents, this);
}

void VRELTree::VRELTreeNode::DeleteDescendants() {
  PendingDeletions deletions;
  try {
    AddChildrenTo(deletions);
  } catch (...) {
    // Memory is exhausted: the nodes that are in the list are deleted, the others leak.
  }
  while (!deletions.nodes.empty()) {
    deletions.current = deletions.nodes.back();
    deletions.nodes.pop_back();
    try {
      delete deletions.current;
    } catch (...) {
    }
  }
}

void VRELTree::VRELTreeNode::AddChildrenTo(PendingDeletions& target) {
  for (int i = children.size() - 1; i >= 0; --i) {
    VRELTreeNode* const child = children[i];
    if (child == nullptr || child == this || child->pending != nullptr) continue;
    target.nodes.push_back(child);
    child->pending = &target;
  }
}

VRELTree::VRELTreeNode* VRELTree::VRELTreeNode::AddChild(void* childObject) {
  if (childObject == nullptr) return nullptr;
  auto child = std::make_unique<VRELTreeNode>(childObject);
  AddChildPtr(child.get());
  return child.release();
}

// Both undo the first step if there is no memory for the second: half a link would outlive its node.
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
    node->parentOf.push_back(this);
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

// Goes to a child of the current node. If memory is exhausted, the iterator is unchanged.
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

// Returns the index, from `first` on, of a child of the current node that was not visited, or -1.
int VRELTree::VRELTreeNode::VRELTreeNodeIterator::NextUnvisitedChild(int first) const {
  for (int i = first; i < current->children.size(); ++i) {
    if (!visited.Get(current->children[i])) return i;
  }
  return -1;
}
