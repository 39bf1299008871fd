// The tree of the library, and the walk through it.
#pragma once

#include <vector>

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELHashList.h"
#include "VRELHashTraits.h"
#include "VRELList.h"
#include "VRINResult.h"

// A root node and what hangs below it. A node carries a pointer, its object, which the tree never looks at and never
// deletes; it may have several parents, and the links may even run in a circle.
//
//   VRELTree assembly(&car);
//   VRELTree::VRELTreeNode* const axle = assembly.GetRoot()->AddChild(&frontAxle);
//   axle->AddChild(&leftWheel);
//   int const parts = assembly.GetChildCount();  // 3
//
// Whatever goes through the tree goes depth-first, children in their order, beginning with the root; see
// VRELTreeNodeIterator for what it meets. No operation needs more of the call stack for a deeper tree.
class VREL_EXPORT VRELTree {
 public:
  class VRELTreeNode;

  // No root.
  VRELTree() = default;
  // A new root with that object.
  explicit VRELTree(void* object);
  VRELTree(VRELTree const&) = delete;
  VRELTree& operator=(VRELTree const&) = delete;
  // Deletes the root, and with it all below. What a destructor of a node throws is dropped.
  virtual ~VRELTree();

  // Takes the node as the root, and from now on owns it; null is allowed. The old root is not deleted: it belongs to
  // the caller.
  void SetRoot(VRELTreeNode* node) noexcept { root = node; }
  // Gives the root another object; nothing happens without a root.
  void SetRoot(void* object) noexcept;
  // Leaves no root. The old one is not deleted: it belongs to the caller.
  void ClearRoot() noexcept { root = nullptr; }
  // Null without a root.
  VRELTreeNode* GetRoot() const noexcept { return root; }

  // The number of nodes that a walk from the root meets, the root included; 0 without a root.
  int GetChildCount() const;
  // The number of nodes that a walk meets from the first node with that object, itself included; 0 if there is none.
  int GetChildCount(void* object) const;

  // Adds to `out`, in the order of the walk, each node for whose object match(key, object) holds; what stands in `out`
  // stays. VREL_S_NO_ENTITY if `out` is empty in the end; VREL_E_INVALID_ARGUMENT if `match` or `out` is null.
  VRINResult Find(void* key, bool (*match)(void* key, void* object), VRELDynamicArray<VRELTreeNode*>* out) const;

  // Prints each node of the walk with its parents and children to standard output; objects as decimal integers, cut to
  // the width of an int.
  void Dump() const;

 private:
  VRELTreeNode* root = nullptr;
};

// As a key, a node is hashed by its address, yet compared by its object, which is promised: nodes with one object
// between them count as one where they happen to meet in the table.
template <>
struct VRELHashTraits<VRELTree::VRELTreeNode*> {
  static unsigned int Hash(VRELTree::VRELTreeNode* const& key);
  // False if either is null.
  static bool Equal(VRELTree::VRELTreeNode* const& a, VRELTree::VRELTreeNode* const& b);
};

// A node that stands on the heap and belongs to its parents, or has none and belongs to whoever made it.
//
// Deleting a node deletes all its descendants, each one once, however many parents it has; and each node that dies is
// taken out of the lists of its neighbours. Derived classes may add to a node what they like, and their destructors may
// throw: what comes up from a descendant is dropped. Such a destructor still finds the children in place.
class VREL_EXPORT VRELTree::VRELTreeNode {
 public:
  class VRELTreeNodeIterator;

  explicit VRELTreeNode(void* theObject = nullptr) : object(theObject) {}
  VRELTreeNode(VRELTreeNode const&) = delete;
  VRELTreeNode& operator=(VRELTreeNode const&) = delete;
  virtual ~VRELTreeNode() noexcept(false);

  void* GetObjectPtr() const noexcept { return object; }
  void SetObjectPtr(void* theObject) noexcept { object = theObject; }

  // The lists themselves, in the order of coming. A child that is taken out belongs to the caller.
  VRELDynamicArray<VRELTreeNode*>& GetChildren() noexcept { return children; }
  VRELDynamicArray<VRELTreeNode*> const& GetChildren() const noexcept { return children; }
  VRELDynamicArray<VRELTreeNode*>& GetParents() noexcept { return parents; }
  VRELDynamicArray<VRELTreeNode*> const& GetParents() const noexcept { return parents; }

  // Makes a child with that object and returns it; null, and nothing is made, for a null object.
  VRELTreeNode* AddChild(void* childObject);
  // Takes the node as a child, and this as its parent. That null becomes a child as well is promised; a walk ends
  // there.
  void AddChildPtr(VRELTreeNode* node);
  // Names a parent, whose children stay as they are.
  void AddParent(VRELTreeNode* node);

 private:
  struct Orphans;

  void LeaveNeighbours();
  void DeleteChildren();
  void HandOverChildren(Orphans& heir);

  void* object;
  VRELDynamicArray<VRELTreeNode*> parents;
  VRELDynamicArray<VRELTreeNode*> children;
  // Those that named this node a parent, by either operation.
  std::vector<VRELTreeNode*> namedBy;
  // The nodes which the destructor of an ancestor is about to delete, this one among them; null if there are none.
  Orphans* orphans = nullptr;
};

// The walk through what hangs below a node: depth-first, children in their order, and each node once, whatever the
// number of its parents. The start node is the current one when the walk begins; it can come again through a circle,
// once, which is promised.
//
//   VRELTree::VRELTreeNode::VRELTreeNodeIterator walk(tree.GetRoot());
//   for (auto* node = walk.GetCurrentNode(); node != nullptr; node = walk.GetNextNode()) Use(node->GetObjectPtr());
//
// The state of the walk is its own, so several may go through one tree. Children may be added meanwhile; a node on the
// way from the start to the current one must not be deleted. A whole walk takes time linear in the links.
class VREL_EXPORT VRELTree::VRELTreeNode::VRELTreeNodeIterator {
 public:
  explicit VRELTreeNodeIterator(VRELTreeNode* start) : current(start) {}
  virtual ~VRELTreeNodeIterator();

  // Null where there is none.
  VRELTreeNode* GetCurrentNode() const noexcept { return current; }
  void* GetCurrentObject() const noexcept { return current != nullptr ? current->object : nullptr; }

  // Go on to the next node; null at the end, and from then on.
  VRELTreeNode* GetNextNode();
  void* GetNextObject();

  // Puts the walk on a node, or on none; what was visited, and the way back, stay.
  void SetNode(VRELTreeNode* node) noexcept { current = node; }
  // Forgets what was visited, and the way back; the current node stays.
  void Clear();

 private:
  int NextUnvisitedChild(int first) const;
  void Descend(int index);

  VRELTreeNode* current;
  VRELHashList<VRELTreeNode*> visited;
  // The way back: each node on it, and behind each the index of the child that was taken.
  VRELList stack;
};

inline unsigned int VRELHashTraits<VRELTree::VRELTreeNode*>::Hash(VRELTree::VRELTreeNode* const& key) {
  return VRELHashTraits<void*>::Hash(key);
}

inline bool VRELHashTraits<VRELTree::VRELTreeNode*>::Equal(VRELTree::VRELTreeNode* const& a,
                                                           VRELTree::VRELTreeNode* const& b) {
  return a != nullptr && b != nullptr && a->GetObjectPtr() == b->GetObjectPtr();
}
