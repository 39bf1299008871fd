// A linked list whose nodes carry a number.
#pragma once

#include "VRELExport.h"
#include "detail/VRELNodeChain.h"

// A list of pointers, each under a key. Keys need not differ, and stay in the order of coming; a search goes from the
// head and finds the first. For a map that searches in constant time take VRELHashMap. The pointers are never looked
// at and what they point at is never deleted.
//
//   VRELMap names;
//   names.PushBack(17, name);
//   void* const found = names.GetValueByKey(17);
//
// An iterator stays good until its own node is erased.
class VREL_EXPORT VRELMap {
 public:
  // A node, owned by its map.
  class VREL_EXPORT VRELMapNode {
   public:
    // A place in a map: a node, or the end.
    class VRELMapIterator {
     public:
      explicit VRELMapIterator(VRELMapNode* theNode = nullptr) noexcept : node(theNode) {}

      // The value; null at the end.
      void* operator*() const noexcept { return node != nullptr ? node->value : nullptr; }
      void* GetValue() const noexcept { return **this; }
      // 0 at the end.
      long GetKey() const noexcept { return node != nullptr ? node->key : 0; }

      // To the next node, to the one before. The end stays the end, and it stands in front of the head as well.
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
    // Deletes all nodes that follow.
    ~VRELMapNode() { VRELNodeChain<VRELMapNode>::DeleteFrom(next); }

    void* value;
    long key;
    VRELMapNode* next = nullptr;
    VRELMapNode* previous = nullptr;
  };
  using Iterator = VRELMapNode::VRELMapIterator;

  VRELMap() = default;
  VRELMap(VRELMap const&) = delete;
  VRELMap& operator=(VRELMap const&) = delete;
  virtual ~VRELMap();

  // The value at the head, at the tail, at the tail; null for an empty map.
  void* GetFront() const noexcept { return Begin().GetValue(); }
  void* GetBack() const noexcept { return Iterator(chain.tail).GetValue(); }
  void* GetTop() const noexcept { return GetBack(); }
  // The keys of the same; 0 for an empty map.
  long GetFrontKey() const noexcept { return Begin().GetKey(); }
  long GetBackKey() const noexcept { return Iterator(chain.tail).GetKey(); }
  long GetTopKey() const noexcept { return GetBackKey(); }

  int GetSize() const noexcept { return chain.size; }
  bool IsEmpty() const noexcept { return chain.size == 0; }

  // At the head; the other three at the tail.
  void PushFront(long key, void* value);
  void PushBack(long key, void* value);
  void Append(long key, void* value) { PushBack(key, value); }
  void Push(long key, void* value) { PushBack(key, value); }

  // At the head, at the tail, at the tail; nothing happens to an empty map.
  void PopFront() noexcept { chain.Erase(chain.head); }
  void PopBack() noexcept { chain.Erase(chain.tail); }
  void Pop() noexcept { PopBack(); }

  // The first node with the value, with the key; the end if there is none.
  Iterator Find(void* value) const noexcept { return Iterator(chain.Find(value)); }
  Iterator FindByKey(long key) const noexcept {
    return Iterator(chain.FindIf([=](VRELMapNode const& node) { return node.key == key; }));
  }
  // The value of the first node with the key; null if there is none.
  void* GetValueByKey(long key) const noexcept { return *FindByKey(key); }

  // Takes out the node of an iterator; nothing happens for the end.
  void Erase(Iterator place) noexcept { chain.Erase(place.node); }
  // Take out the first node with the value, with the key, if there is one.
  void Remove(void* const& value) noexcept { Erase(Find(value)); }
  void RemoveByKey(long key) noexcept { Erase(FindByKey(key)); }
  // Takes out each node whose value is that of the node before it, whatever the keys.
  void Unique() noexcept { chain.Unique(); }
  void Clear() noexcept { chain.Clear(); }

  Iterator Begin() const noexcept { return Iterator(chain.head); }
  Iterator End() const noexcept { return Iterator(); }
  Iterator begin() const noexcept { return Begin(); }
  Iterator end() const noexcept { return End(); }

 private:
  VRELNodeChain<VRELMapNode> chain;
};
