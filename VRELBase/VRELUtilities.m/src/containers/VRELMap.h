// The linked list of keys and pointers.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <iterator>

#include "VRELExport.h"
#include "VRELPair.h"
#include "detail/VRELNodeChain.h"

// Doubly linked list of pointers with integer keys, in order of insertion.
//
// Use it for a few entries whose order matters; use VRELHashMap to search in constant time. Keys need not be unique: a
// search starts at the head and finds the first one.
//
//   VRELMap names;
//   names.PushBack(17, name);
//   void* const found = names.GetValueByKey(17);
//   for (auto [key, value] : names.Entries()) ...
//
// Pushing, popping and erasing take constant time; searching takes linear time. An iterator is valid until its own node
// is erased. A move leaves the source empty, and iterators then refer to the target.
//
// Ownership: the map owns its nodes, never the objects.
// Thread safety: none.
class VREL_EXPORT VRELMap {
 public:
  // A node, owned by its map.
  class VREL_EXPORT VRELMapNode {
   public:
    // Iterator in both directions: a node of a map, or the end.
    class VRELMapIterator {
     public:
      using iterator_category = std::input_iterator_tag;
      using value_type = void*;
      using difference_type = std::ptrdiff_t;
      using pointer = void;
      using reference = void*;

      explicit VRELMapIterator(VRELMapNode* theNode = nullptr) noexcept : node(theNode) {}

      // Returns the value; null at the end.
      void* operator*() const noexcept { return node != nullptr ? node->value : nullptr; }
      void* GetValue() const noexcept { return **this; }
      // Returns the key; 0 at the end.
      long GetKey() const noexcept { return node != nullptr ? node->key : 0; }

      // Go to the next node and to the previous one. The end stays the end, and is also before the head.
      VRELMapIterator& operator++() noexcept {
        if (node != nullptr) node = node->next;
        return *this;
      }
      VRELMapIterator operator++(int) noexcept {
        VRELMapIterator const before = *this;
        ++*this;
        return before;
      }
      VRELMapIterator& operator--() noexcept {
        if (node != nullptr) node = node->previous;
        return *this;
      }
      VRELMapIterator operator--(int) noexcept {
        VRELMapIterator const before = *this;
        --*this;
        return before;
      }

      bool operator==(VRELMapIterator const& other) const noexcept { return node == other.node; }
      bool operator!=(VRELMapIterator const& other) const noexcept { return node != other.node; }

     private:
      friend class VRELMap;

      VRELMapNode* node;
    };

    VRELMapNode(long theKey, void* theValue) noexcept : value(theValue), key(theKey) {}
    VRELMapNode(VRELMapNode const&) = delete;
    VRELMapNode& operator=(VRELMapNode const&) = delete;
    // Deletes all nodes after this one, in a loop.
    ~VRELMapNode() { VRELNodeChain<VRELMapNode>::DeleteFrom(next); }

    void* value;
    long key;
    VRELMapNode* next = nullptr;
    VRELMapNode* previous = nullptr;
  };
  using Iterator = VRELMapNode::VRELMapIterator;
  using value_type = VRELPair<long, void*>;

  // The nodes of a map as pairs of key and value.
  class EntryRange {
   public:
    // A node whose value is its entry.
    class EntryIterator {
     public:
      using iterator_category = std::input_iterator_tag;
      using value_type = VRELPair<long, void*>;
      using difference_type = std::ptrdiff_t;
      using pointer = void;
      using reference = VRELPair<long, void*>;

      explicit EntryIterator(Iterator theNode = Iterator()) noexcept : node(theNode) {}

      VRELPair<long, void*> operator*() const noexcept { return {node.GetKey(), node.GetValue()}; }
      EntryIterator& operator++() noexcept {
        ++node;
        return *this;
      }
      EntryIterator operator++(int) noexcept { return EntryIterator(node++); }
      bool operator==(EntryIterator const& other) const noexcept { return node == other.node; }
      bool operator!=(EntryIterator const& other) const noexcept { return node != other.node; }

     private:
      Iterator node;
    };

    explicit EntryRange(Iterator theFirst) noexcept : first(theFirst) {}
    EntryIterator begin() const noexcept { return first; }
    EntryIterator end() const noexcept { return EntryIterator(); }

   private:
    EntryIterator first;
  };

  VRELMap() = default;
  // Adds the listed entries at the tail.
  VRELMap(std::initializer_list<value_type> entries) {
    for (value_type const& entry : entries) PushBack(entry.key, entry.value);
  }
  VRELMap(VRELMap const&) = delete;
  VRELMap& operator=(VRELMap const&) = delete;
  VRELMap(VRELMap&&) noexcept = default;
  VRELMap& operator=(VRELMap&&) noexcept = default;
  virtual ~VRELMap();

  // Return the value at the head, at the tail, and at the tail; null for an empty map.
  void* GetFront() const noexcept { return Begin().GetValue(); }
  void* GetBack() const noexcept { return Iterator(chain.tail).GetValue(); }
  void* GetTop() const noexcept { return GetBack(); }
  // Return the keys of the same nodes; 0 for an empty map.
  long GetFrontKey() const noexcept { return Begin().GetKey(); }
  long GetBackKey() const noexcept { return Iterator(chain.tail).GetKey(); }
  long GetTopKey() const noexcept { return GetBackKey(); }

  int GetSize() const noexcept { return chain.size; }
  bool IsEmpty() const noexcept { return chain.size == 0; }

  // PushFront adds at the head, the others at the tail.
  void PushFront(long key, void* value);
  void PushBack(long key, void* value);
  void Append(long key, void* value) { PushBack(key, value); }
  void Push(long key, void* value) { PushBack(key, value); }

  // Remove the node at the head, at the tail, and at the tail. Do nothing to an empty map.
  void PopFront() noexcept { chain.Erase(chain.head); }
  void PopBack() noexcept { chain.Erase(chain.tail); }
  void Pop() noexcept { PopBack(); }

  // Return the first node with the value, or with the key; the end if there is none.
  Iterator Find(void* value) const noexcept { return Iterator(chain.Find(value)); }
  Iterator FindByKey(long key) const noexcept {
    return Iterator(chain.FindIf([=](VRELMapNode const& node) { return node.key == key; }));
  }
  // Returns the value of the first node with the key, or null.
  void* GetValueByKey(long key) const noexcept { return *FindByKey(key); }

  // Removes the node of an iterator. Does nothing for the end.
  void Erase(Iterator position) noexcept { chain.Erase(position.node); }
  // Remove the first node with the value, or with the key, if there is one.
  void Remove(void* const& value) noexcept { Erase(Find(value)); }
  void RemoveByKey(long key) noexcept { Erase(FindByKey(key)); }
  // Removes each node whose value equals that of the node before it. Keys do not matter.
  void Unique() noexcept { chain.Unique(); }
  void Clear() noexcept { chain.Clear(); }

  Iterator Begin() const noexcept { return Iterator(chain.head); }
  Iterator End() const noexcept { return Iterator(); }
  Iterator begin() const noexcept { return Begin(); }
  Iterator end() const noexcept { return End(); }

  // Returns the entries for a loop with structured bindings.
  EntryRange Entries() const noexcept { return EntryRange(Begin()); }

  // Returns whether both maps have the same keys and pointers in the same order.
  bool operator==(VRELMap const& other) const noexcept {
    return chain.IsEqual(other.chain,
                         [](auto const& a, auto const& b) { return a.key == b.key && a.value == b.value; });
  }
  bool operator!=(VRELMap const& other) const noexcept { return !(*this == other); }

 private:
  VRELNodeChain<VRELMapNode> chain;
};
