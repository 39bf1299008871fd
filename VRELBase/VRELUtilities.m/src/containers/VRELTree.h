// The tree of the library and its iterator.
#pragma once

#include <utility>
#include <vector>

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELHashList.h"
#include "VRELHashTraits.h"
#include "VRELList.h"
#include "VRINResult.h"

// Rooted graph of nodes, each with a pointer to an object of the client.
//
// Use it for hierarchies such as assemblies. A node may have several parents, and links may form a cycle.
//
//   VRELTree assembly(&car);
//   VRELTree::VRELTreeNode* const axle = assembly.GetRoot()->AddChild(&frontAxle);
//   axle->AddChild(&leftWheel);
//   int const parts = assembly.GetChildCount();  // 3
//
// Operations on the tree visit the root and then the nodes that VRELTreeNodeIterator visits from it, in its order. No
// operation is recursive, so that the depth of a tree is not limited by the call stack.
//
// Ownership: the tree owns its nodes, never the objects.
// Thread safety: none.
class VREL_EXPORT VRELTree {
 public:
  class VRELTreeNode;

  // Creates a tree without a root.
  VRELTree() = default;
  // Creates a tree whose root has that object.
  explicit VRELTree(void* object);
  VRELTree(VRELTree const&) = delete;
  VRELTree& operator=(VRELTree const&) = delete;
  // Both transfer the root and leave the source without one. Assignment deletes the previous root first.
  VRELTree(VRELTree&& other) noexcept : root(std::exchange(other.root, nullptr)) {}
  VRELTree& operator=(VRELTree&& other) noexcept;
  // Deletes the root and its descendants. Exceptions of the nodes' destructors are dropped.
  virtual ~VRELTree();

  // Sets the root; null is allowed.
  // Ownership: the tree owns the new root. The old one is not deleted and belongs to the caller.
  void SetRoot(VRELTreeNode* node) noexcept { root = node; }
  // Replaces the object of the root. Does nothing without a root.
  void SetRoot(void* object) noexcept;
  // Removes the root.
  // Ownership: the old root is not deleted and belongs to the caller.
  void ClearRoot() noexcept { root = nullptr; }
  // Returns the root, or null.
  VRELTreeNode* GetRoot() const noexcept { return root; }

  // Returns the number of nodes that are reached from the root, the root included; 0 without a root.
  int GetChildCount() const;
  // Returns the number of nodes that are reached from the first node with that object, itself included; 0 if there is
  // none.
  int GetChildCount(void* object) const;

  // Adds to `out`, in order of traversal, each node for whose object match(key, object) holds. Nodes that are in `out`
  // already stay there.
  //
  // Errors: VREL_S_NO_ENTITY if `out` is empty at the end; VREL_E_INVALID_ARGUMENT if `match` or `out` is null.
  VRINResult Find(void* key, bool (*match)(void* key, void* object), VRELDynamicArray<VRELTreeNode*>* out) const;

  // Prints each node with its parents and children to standard output. Objects are printed as decimal integers,
  // truncated to an int.
  void Dump() const;

 private:
  VRELTreeNode* root = nullptr;
};

// Hash and equality of a node as a key.
// Compatibility: a node is hashed by its address, but compared by its object. Two nodes with the same object are one
// key if they are in the same probe run, and two keys otherwise.
template <>
struct VRELHashTraits<VRELTree::VRELTreeNode*> {
  static unsigned int Hash(VRELTree::VRELTreeNode* const& key);
  // Returns false if either node is null.
  static bool Equal(VRELTree::VRELTreeNode* const& a, VRELTree::VRELTreeNode* const& b);
};

// Node of a tree, allocated with new.
//
//   auto* const wheel = axle->AddChild(&leftWheel);
//   wheel->AddParent(spareParts);
//   delete axle;  // and wheel
//
// Deleting a node deletes all its descendants, in a loop and each one once, even if it has several parents. A deleted
// node is removed from the lists of its parents and children. A class may derive from it, and its destructor may throw:
// exceptions of descendants are dropped. While such a destructor runs, the children still exist.
//
// Ownership: a node belongs to its parents; a node without parents belongs to its creator.
class VREL_EXPORT VRELTree::VRELTreeNode {
 public:
  class VRELTreeNodeIterator;

  explicit VRELTreeNode(void* theObject = nullptr) : object(theObject) {}
  VRELTreeNode(VRELTreeNode const&) = delete;
  VRELTreeNode& operator=(VRELTreeNode const&) = delete;
  virtual ~VRELTreeNode() noexcept(false);

  void* GetObjectPtr() const noexcept { return object; }
  void SetObjectPtr(void* theObject) noexcept { object = theObject; }

  // Return the lists themselves, in order of insertion.
  // Ownership: a child that is removed from the list belongs to the caller.
  VRELDynamicArray<VRELTreeNode*>& GetChildren() noexcept { return children; }
  VRELDynamicArray<VRELTreeNode*> const& GetChildren() const noexcept { return children; }
  VRELDynamicArray<VRELTreeNode*>& GetParents() noexcept { return parents; }
  VRELDynamicArray<VRELTreeNode*> const& GetParents() const noexcept { return parents; }

  // Adds a new node with that object as a child and returns it. Returns null, and adds nothing, for a null object.
  VRELTreeNode* AddChild(void* childObject);
  // Adds the node as a child, and this node as its parent.
  // Compatibility: null is added as a child too, and ends a traversal.
  void AddChildPtr(VRELTreeNode* node);
  // Adds a parent, whose list of children is unchanged.
  void AddParent(VRELTreeNode* node);

 private:
  struct PendingDeletions;

  void UnlinkFromNeighbours();
  void DeleteDescendants();
  void AddChildrenTo(PendingDeletions& target);

  void* object;
  VRELDynamicArray<VRELTreeNode*> parents;
  VRELDynamicArray<VRELTreeNode*> children;
  // Nodes that have this node as a parent, by AddChildPtr or AddParent.
  std::vector<VRELTreeNode*> parentOf;
  // The list of nodes that includes this one and that the destructor of an ancestor is about to delete; null otherwise.
  PendingDeletions* pending = nullptr;
};

// Iterator over the descendants of a node: depth-first, in the order of the children, each node once.
//
//   VRELTree::VRELTreeNode::VRELTreeNodeIterator iterator(tree.GetRoot());
//   for (auto* node = iterator.GetCurrentNode(); node != nullptr; node = iterator.GetNextNode()) {
//     Use(node->GetObjectPtr());
//   }
//
// Several iterators may traverse one tree. Children may be added meanwhile; a node on the path from the start to the
// current node must not be deleted. A traversal takes time linear in the number of links.
// Compatibility: the start node is not marked as visited, and is returned once more if a cycle leads to it.
class VREL_EXPORT VRELTree::VRELTreeNode::VRELTreeNodeIterator {
 public:
  explicit VRELTreeNodeIterator(VRELTreeNode* start) : current(start) {}
  virtual ~VRELTreeNodeIterator();

  // Return the current node and its object; null at the end.
  VRELTreeNode* GetCurrentNode() const noexcept { return current; }
  void* GetCurrentObject() const noexcept { return current != nullptr ? current->object : nullptr; }

  // Go to the next node and return it, or its object; null at the end and from then on.
  VRELTreeNode* GetNextNode();
  void* GetNextObject();

  // Sets the current node, which may be null. The visited nodes and the path stay.
  void SetNode(VRELTreeNode* node) noexcept { current = node; }
  // Forgets the visited nodes and the path. The current node stays.
  void Clear();

 private:
  int NextUnvisitedChild(int first) const;
  void Descend(int index);

  VRELTreeNode* current;
  VRELHashList<VRELTreeNode*> visited;
  // The path from the start to the current node: each node, followed by the index of the child that was taken.
  VRELList stack;
};

inline unsigned int VRELHashTraits<VRELTree::VRELTreeNode*>::Hash(VRELTree::VRELTreeNode* const& key) {
  return VRELHashTraits<void*>::Hash(key);
}

inline bool VRELHashTraits<VRELTree::VRELTreeNode*>::Equal(VRELTree::VRELTreeNode* const& a,
                                                           VRELTree::VRELTreeNode* const& b) {
  return a != nullptr && b != nullptr && a->GetObjectPtr() == b->GetObjectPtr();
}
