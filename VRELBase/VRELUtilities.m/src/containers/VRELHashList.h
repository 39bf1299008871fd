// The hash set of the library.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <iterator>

#include "VRELHashTraits.h"
#include "detail/VRELHashTable.h"

template <class T>
class VRELHashListSnapshot;

// Hash set with open addressing and linear probing.
//
// Use it for membership tests; use VRELHashMap to find a value by a key.
//
//   VRELHashList<void*> seen;
//   if (seen.Add(node)) Visit(node);
//   for (void* each : seen) ...
//
// It has 17 slots at first. They are doubled before an element would fill more than three quarters of them, and never
// decrease. Elements are stored in place in flat arrays; T needs a default constructor, assignment, and must survive a
// move by byte copy (VRELIsByteMovable). Hash and equality are those of VRELHashTraits<T> unless SetFunctions is
// called.
//
// A copy shares the arrays with its source and has its own count and cursor: an element added through one is found
// through the other, whose Size does not change. A move leaves the source empty.
//
// Enumeration is in slot order, which a rehash changes. InitEnumeration, HasNext and GetNext use the one cursor of the
// list, so that only one enumeration can run at a time; begin() and end() are independent of it. An addition or removal
// invalidates iterators; using one afterwards visits elements twice or not at all, and is otherwise safe.
//
// Errors: operations that add throw VRELAllocException if memory is exhausted.
// Thread safety: none.
template <class T>
class VRELHashList {
 public:
  using value_type = T;

  // Forward iterator over the elements. Elements are constant: their slot depends on their value.
  class Iterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = T const*;
    using reference = T const&;

    Iterator() = default;

    reference operator*() const noexcept { return table->rows.keys[slot]; }
    pointer operator->() const noexcept { return &**this; }
    Iterator& operator++() noexcept {
      slot = table->FindOccupied(slot + 1);
      return *this;
    }
    Iterator operator++(int) noexcept {
      Iterator const before = *this;
      ++*this;
      return before;
    }
    bool operator==(Iterator const& other) const noexcept { return slot == other.slot; }
    bool operator!=(Iterator const& other) const noexcept { return slot != other.slot; }

   private:
    friend class VRELHashList;

    Iterator(VRELHashTable<T, void> const* theTable, int theSlot) noexcept : table(theTable), slot(theSlot) {}

    VRELHashTable<T, void> const* table = nullptr;
    int slot = -1;  // -1 at the end
  };
  using iterator = Iterator;
  using const_iterator = Iterator;

  // The defaults, from VRELHashTraits<T>. A program may specialize them for its own type.
  static unsigned int GetHashValue(T const& element) { return VRELHashTraits<T>::Hash(element); }
  static bool HashEqualFunction(T const& a, T const& b) { return VRELHashTraits<T>::Equal(a, b); }

  // Below 1 slot, the list starts without slots and allocates 17 when the first element is added.
  explicit VRELHashList(int slots = 17) : table(slots) {}
  // Adds the listed elements, as Add does. Braces mean a list wherever T allows it: VRELHashList<int>{40} has one
  // element, VRELHashList<int>(40) has 40 slots.
  VRELHashList(std::initializer_list<T> elements) : VRELHashList() {
    for (T const& element : elements) Add(element);
  }
  VRELHashList(VRELHashList const&) = default;
  VRELHashList(VRELHashList&&) noexcept = default;
  // Assigns arrays, functions and count. The cursor stays.
  VRELHashList& operator=(VRELHashList const&) = default;
  VRELHashList& operator=(VRELHashList&&) noexcept = default;

  // Returns a list with its own arrays and the elements in the same slots.
  VRELHashList copy() const {
    VRELHashList result(*this);
    result.table.Unshare();
    return result;
  }

  // Returns the number of elements.
  // Compatibility: it counts elements that a Rehash dropped, and not those that were added through a copy.
  int Size() const noexcept { return table.Size(); }

  // Sets hash and equality; null selects the default.
  // Requires: the list is empty.
  void SetFunctions(unsigned int (*hash)(T const&), bool (*equal)(T const&, T const&)) noexcept {
    table.SetFunctions(hash, equal);
  }
  unsigned int GetHashCode(T const& element) const { return table.GetHashCode(element); }
  bool CheckEqual(T const& a, T const& b) const { return table.CheckEqual(a, b); }

  // Returns the slot of an element, or -1.
  int Find(T const& element) const { return table.Find(element); }
  // Returns whether the element is in the list.
  bool Get(T const& element) const { return table.FindRow(element) >= 0; }

  // Adds the element. Returns false, and keeps the one in the list, if there is an equal one.
  // Compatibility: may rehash even then.
  bool Add(T const& element) { return table.Add(element); }
  // Replaces the equal element, or adds it. Returns true.
  bool Put(T const& element) {
    int const slot = table.FindRow(element);
    if (slot < 0) return table.Add(element);
    table.rows.keys[slot] = element;
    return true;
  }
  // Removes the element. Returns whether it was in the list.
  bool Remove(T const& element) { return table.Remove(element); }
  // Removes all elements.
  // Compatibility: leaves exactly 17 slots, and the cursor where it is.
  void Clear() { table.Clear(); }

  // Rehashes into `slots` slots, or into as many as there are elements if that is more.
  // Compatibility: if two elements have become equal, or collide only now, the second one is dropped but still counted.
  void Rehash(int slots) { table.Rehash(slots); }
  // Doubles the slots until that many elements fit without another rehash.
  void reserve(int elements) { table.Reserve(elements); }

  // Moves the cursor to the first slot.
  void InitEnumeration() const noexcept { table.InitEnumeration(); }
  // Returns whether GetNext will return an element; the cursor stays.
  bool HasNext() const noexcept { return table.HasNext(); }
  // Assigns the next element to `out`. Returns false at the end, with `out` unchanged.
  bool GetNext(T& out) const {
    int const slot = table.GetNext();
    if (slot < 0) return false;
    out = table.rows.keys[slot];
    return true;
  }

  Iterator begin() const noexcept { return {&table, table.FindFirst()}; }
  Iterator end() const noexcept { return {&table, -1}; }

  // Returns whether both lists have the same elements, each by the other's equality. Slots do not matter.
  friend bool operator==(VRELHashList const& a, VRELHashList const& b) {
    return a.table.IsEqual(
        b.table, [](auto const& one, int slot, auto const& other) { return other.Find(one.rows.keys[slot]) >= 0; });
  }
  friend bool operator!=(VRELHashList const& a, VRELHashList const& b) { return !(a == b); }

 private:
  template <class>
  friend class VRELHashListSnapshot;

  VRELHashTable<T, void> table;
};
