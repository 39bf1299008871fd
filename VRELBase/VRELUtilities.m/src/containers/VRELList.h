// The linked list of the library.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <iterator>

#include "VRELExport.h"
#include "detail/VRELNodeChain.h"

// Doubly linked list of pointers.
//
// Use it for a queue or a list with frequent removals; use VRELDynamicArray<void*> for indexed access. Push, GetTop and
// Pop make a stack at the tail.
//
//   VRELList jobs;
//   jobs.PushBack(job);
//   for (void* each : jobs) Start(each);
//
// Pushing, popping and erasing take constant time; searching takes linear time. An iterator is valid until its own node
// is erased. A move leaves the source empty, and iterators then refer to the target.
//
// Ownership: the list owns its nodes, never the objects. Null is a value like any other.
// Thread safety: none.
class VREL_EXPORT VRELList {
 public:
  // A node, owned by its list.
  class VREL_EXPORT VRELListNode {
   public:
    // Input iterator: a node of a list, or the end.
    class VRELListIterator {
     public:
      using iterator_category = std::input_iterator_tag;
      using value_type = void*;
      using difference_type = std::ptrdiff_t;
      using pointer = void;
      using reference = void*;

      explicit VRELListIterator(VRELListNode* theNode = nullptr) noexcept : node(theNode) {}

      // Returns the value; null at the end.
      void* operator*() const noexcept { return node != nullptr ? node->value : nullptr; }
      void* GetValue() const noexcept { return **this; }

      // Goes to the next node. The end stays the end.
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
    // Deletes all nodes after this one, in a loop.
    ~VRELListNode() { VRELNodeChain<VRELListNode>::DeleteFrom(next); }

    void* value;
    VRELListNode* next = nullptr;
    VRELListNode* previous = nullptr;
  };
  using Iterator = VRELListNode::VRELListIterator;
  using value_type = void*;

  VRELList() = default;
  // Adds the listed pointers at the tail.
  VRELList(std::initializer_list<void*> values) {
    for (void* value : values) PushBack(value);
  }
  VRELList(VRELList const&) = delete;
  VRELList& operator=(VRELList const&) = delete;
  VRELList(VRELList&&) noexcept = default;
  VRELList& operator=(VRELList&&) noexcept = default;
  virtual ~VRELList();

  // Return the value at the head, at the tail, and at the tail; null for an empty list.
  void* GetFront() const noexcept { return chain.head != nullptr ? chain.head->value : nullptr; }
  void* GetBack() const noexcept { return chain.tail != nullptr ? chain.tail->value : nullptr; }
  void* GetTop() const noexcept { return GetBack(); }

  int GetSize() const noexcept { return chain.size; }
  bool IsEmpty() const noexcept { return chain.size == 0; }

  // PushFront adds at the head, the others at the tail.
  void PushFront(void* value);
  void PushBack(void* value);
  void Append(void* value) { PushBack(value); }
  void Push(void* value) { PushBack(value); }

  // Remove the node at the head, at the tail, and at the tail. Do nothing to an empty list.
  void PopFront() noexcept { chain.Erase(chain.head); }
  void PopBack() noexcept { chain.Erase(chain.tail); }
  void Pop() noexcept { PopBack(); }

  // Returns the first node with the value, or the end.
  Iterator Find(void* value) const noexcept { return Iterator(chain.Find(value)); }
  // Removes the node of an iterator. Does nothing for the end.
  void Erase(Iterator position) noexcept { chain.Erase(position.node); }
  // Removes the first node with the value, if there is one.
  void Remove(void* const& value) noexcept { chain.Erase(chain.Find(value)); }
  // Removes each node whose value equals that of the node before it.
  void Unique() noexcept { chain.Unique(); }
  void Clear() noexcept { chain.Clear(); }

  Iterator Begin() const noexcept { return Iterator(chain.head); }
  Iterator End() const noexcept { return Iterator(); }
  Iterator begin() const noexcept { return Begin(); }
  Iterator end() const noexcept { return End(); }

  // Returns whether both lists have the same pointers in the same order.
  bool operator==(VRELList const& other) const noexcept {
    return chain.IsEqual(other.chain, [](auto const& a, auto const& b) { return a.value == b.value; });
  }
  bool operator!=(VRELList const& other) const noexcept { return !(*this == other); }

 private:
  VRELNodeChain<VRELListNode> chain;
};
