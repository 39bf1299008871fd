// The linked list of the library.
#pragma once

#include "VRELExport.h"
#include "detail/VRELNodeChain.h"

// A list of pointers, which never looks at what they point at and never deletes it. Null is a value like any other.
// Pushing, popping and erasing take constant time; what searches takes linear time. Push, GetTop and Pop make a stack
// at the tail.
//
//   VRELList waiting;
//   waiting.PushBack(job);
//   for (void* each : waiting) Start(each);
//
// An iterator stays good until its own node is erased.
class VREL_EXPORT VRELList {
 public:
  // A node, owned by its list.
  class VREL_EXPORT VRELListNode {
   public:
    // A place in a list: a node, or the end.
    class VRELListIterator {
     public:
      explicit VRELListIterator(VRELListNode* theNode = nullptr) noexcept : node(theNode) {}

      // The value; null at the end.
      void* operator*() const noexcept { return node != nullptr ? node->value : nullptr; }
      void* GetValue() const noexcept { return **this; }

      // To the next node. The end stays the end.
      VRELListIterator& operator++() noexcept {
        if (node != nullptr) node = node->next;
        return *this;
      }
      VRELListIterator operator++(int) noexcept {
        VRELListIterator const before = *this;
        ++*this;
        return before;
      }

      bool operator==(VRELListIterator const& other) const noexcept { return node == other.node; }
      bool operator!=(VRELListIterator const& other) const noexcept { return node != other.node; }

     private:
      friend class VRELList;

      VRELListNode* node;
    };

    explicit VRELListNode(void* theValue) noexcept : value(theValue) {}
    VRELListNode(VRELListNode const&) = delete;
    VRELListNode& operator=(VRELListNode const&) = delete;
    // Deletes all nodes that follow.
    ~VRELListNode() { VRELNodeChain<VRELListNode>::DeleteFrom(next); }

    void* value;
    VRELListNode* next = nullptr;
    VRELListNode* previous = nullptr;
  };
  using Iterator = VRELListNode::VRELListIterator;

  VRELList() = default;
  VRELList(VRELList const&) = delete;
  VRELList& operator=(VRELList const&) = delete;
  virtual ~VRELList();

  // The value at the head, at the tail, at the tail; null for an empty list.
  void* GetFront() const noexcept { return chain.head != nullptr ? chain.head->value : nullptr; }
  void* GetBack() const noexcept { return chain.tail != nullptr ? chain.tail->value : nullptr; }
  void* GetTop() const noexcept { return GetBack(); }

  int GetSize() const noexcept { return chain.size; }
  bool IsEmpty() const noexcept { return chain.size == 0; }

  // At the head; the other three at the tail.
  void PushFront(void* value);
  void PushBack(void* value);
  void Append(void* value) { PushBack(value); }
  void Push(void* value) { PushBack(value); }

  // At the head, at the tail, at the tail; nothing happens to an empty list.
  void PopFront() noexcept { chain.Erase(chain.head); }
  void PopBack() noexcept { chain.Erase(chain.tail); }
  void Pop() noexcept { PopBack(); }

  // The first node with the value; the end if there is none.
  Iterator Find(void* value) const noexcept { return Iterator(chain.Find(value)); }
  // Takes out the node of an iterator; nothing happens for the end.
  void Erase(Iterator place) noexcept { chain.Erase(place.node); }
  // Takes out the first node with the value, if there is one.
  void Remove(void* const& value) noexcept { chain.Erase(chain.Find(value)); }
  // Takes out each node whose value is that of the node before it.
  void Unique() noexcept { chain.Unique(); }
  void Clear() noexcept { chain.Clear(); }

  Iterator Begin() const noexcept { return Iterator(chain.head); }
  Iterator End() const noexcept { return Iterator(); }
  Iterator begin() const noexcept { return Begin(); }
  Iterator end() const noexcept { return End(); }

 private:
  VRELNodeChain<VRELListNode> chain;
};
