// The hash map of the library.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <type_traits>

#include "VRELHashList.h"
#include "VRELPair.h"
#include "detail/VRELHashTable.h"

// Hash map with open addressing and linear probing.
//
// Use it to find values by keys in constant time; use VRELMap for a short list in order of insertion.
//
//   VRELHashMap<VRELString, int> counts = {{VRELString(L"hub"), 3}};
//   counts.Put(VRELString(L"rim"), 1);
//   int count = 0;
//   if (counts.Get(VRELString(L"hub"), count)) ...
//   for (auto [name, number] : counts) ...
//
// It has 17 slots at first. They are doubled before an entry would fill more than three quarters of them, and never
// decrease. Keys and values are stored in place in flat arrays; both types need a default constructor, assignment, and
// must survive a move by byte copy (VRELIsByteMovable). Hash and equality are those of VRELHashList<K> unless
// SetFunctions is called.
//
// A copy shares the arrays with its source and has its own count and cursor: an entry added through one is found
// through the other, whose Size does not change. A move leaves the source empty.
//
// Enumeration is in slot order, which a rehash changes. InitEnumeration, HasNext and GetNext use the one cursor of the
// map, so that only one enumeration can run at a time; begin() and end() are independent of it. An addition or removal
// invalidates iterators; using one afterwards visits entries twice or not at all, and is otherwise safe.
//
// Errors: operations that add throw VRELAllocException if memory is exhausted.
// Thread safety: none.
template <class K, class V>
class VRELHashMap {
 public:
  using key_type = K;
  using mapped_type = V;
  using value_type = VRELPair<K, V>;

  // A key in the map and its value; bind it by value: for (auto [key, value] : map).
  template <class Value>
  struct Entry {
    K const& key;
    Value& value;
  };

  // Input iterator over the entries. Value is V or V const.
  template <class Value>
  class BasicIterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = Entry<Value>;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = Entry<Value>;

    BasicIterator() = default;

    Entry<Value> operator*() const noexcept { return {table->rows.keys[slot], table->rows.values[slot]}; }
    BasicIterator& operator++() noexcept {
      slot = table->FindOccupied(slot + 1);
      return *this;
    }
    BasicIterator operator++(int) noexcept {
      BasicIterator const before = *this;
      ++*this;
      return before;
    }
    bool operator==(BasicIterator const& other) const noexcept { return slot == other.slot; }
    bool operator!=(BasicIterator const& other) const noexcept { return slot != other.slot; }

   private:
    friend class VRELHashMap;

    using Table = std::conditional_t<std::is_const_v<Value>, VRELHashTable<K, V> const, VRELHashTable<K, V>>;

    BasicIterator(Table* theTable, int theSlot) noexcept : table(theTable), slot(theSlot) {}

    Table* table = nullptr;
    int slot = -1;  // -1 at the end
  };
  using iterator = BasicIterator<V>;
  using const_iterator = BasicIterator<V const>;

  // Below 1 slot, the map starts without slots and allocates 17 when the first entry is added.
  explicit VRELHashMap(int slots = 17) : table(slots) {}
  // Adds the listed entries, as Add does: of equal keys the first one stays.
  VRELHashMap(std::initializer_list<value_type> entries) : VRELHashMap() {
    for (value_type const& entry : entries) Add(entry.key, entry.value);
  }
  VRELHashMap(VRELHashMap const&) = default;
  VRELHashMap(VRELHashMap&&) noexcept = default;
  // Assigns arrays, functions and count. The cursor stays.
  VRELHashMap& operator=(VRELHashMap const&) = default;
  VRELHashMap& operator=(VRELHashMap&&) noexcept = default;

  // Returns the number of entries.
  // Compatibility: it counts entries that a Rehash dropped, and not those that were added through a copy.
  int Size() const noexcept { return table.Size(); }

  // Sets hash and equality; null selects the default.
  // Requires: the map is empty.
  void SetFunctions(unsigned int (*hash)(K const&), bool (*equal)(K const&, K const&)) noexcept {
    table.SetFunctions(hash, equal);
  }
  unsigned int GetHashCode(K const& key) const { return table.GetHashCode(key); }
  bool CheckEqual(K const& a, K const& b) const { return table.CheckEqual(a, b); }

  // Returns the slot of a key, or -1.
  int FindKey(K const& key) const { return table.Find(key); }
  // Assigns the key's value to `out`. Returns false, with `out` unchanged, if the key is not in the map.
  bool Get(K const& key, V& out) const {
    int const slot = table.FindRow(key);
    if (slot < 0) return false;
    out = table.rows.values[slot];
    return true;
  }

  // Returns the value of the key for which equals(K const&) holds, or null, so that a caller can
  // search without constructing a K. The pointer is valid until the next change.
  //
  // Requires: `hash` is the hash of such a key.
  template <class Equals>
  V const* GetEqual(unsigned int hash, Equals const& equals) const {
    return ValueAt(table.FindEqual(hash, equals, nullptr));
  }
  // The same in constant time also if keys collide. seededHash() must return VRELHashTraits<K>::SeededHash of the key.
  template <class Equals, class SeededHash>
  V const* GetEqual(unsigned int hash, Equals const& equals, SeededHash const& seededHash) const {
    return ValueAt(table.FindEqual(hash, equals, seededHash));
  }

  // Adds an entry. Returns false, and keeps the value in the map, if there is an equal key.
  // Compatibility: may rehash even then.
  bool Add(K const& key, V const& value) { return table.Add(key, value); }
  // Replaces the key's value, or adds an entry. Returns true.
  bool Put(K const& key, V const& value) {
    int const slot = table.FindRow(key);
    if (slot < 0) return table.Add(key, value);
    table.rows.values[slot] = value;
    return true;
  }
  // Removes the key and its value. Returns whether the key was in the map.
  bool Remove(K const& key) { return table.Remove(key); }
  // Removes all entries.
  // Compatibility: leaves exactly 17 slots, and the cursor where it is.
  void Clear() { table.Clear(); }

  // Rehashes into `slots` slots, or into as many as there are entries if that is more.
  // Compatibility: if two keys have become equal, or collide only now, the second entry is dropped but still counted.
  void Rehash(int slots) { table.Rehash(slots); }
  // Doubles the slots until that many entries fit without another rehash.
  void reserve(int entries) { table.Reserve(entries); }

  // Moves the cursor to the first slot.
  void InitEnumeration() const noexcept { table.InitEnumeration(); }
  // Returns whether GetNext will return an entry; the cursor stays.
  bool HasNext() const noexcept { return table.HasNext(); }
  // Assigns the next entry to `out`. Returns false at the end, with `out` unchanged.
  bool GetNext(VRELPair<K, V>& out) const {
    int const slot = table.GetNext();
    if (slot < 0) return false;
    out.key = table.rows.keys[slot];
    out.value = table.rows.values[slot];
    return true;
  }
  // Moves the cursor past the next entry. Returns false at the end.
  bool SkipNext() const noexcept { return table.GetNext() >= 0; }

  iterator begin() noexcept { return {&table, table.FindFirst()}; }
  iterator end() noexcept { return {&table, -1}; }
  const_iterator begin() const noexcept { return {&table, table.FindFirst()}; }
  const_iterator end() const noexcept { return {&table, -1}; }

  // Returns whether both maps have the same keys, each by the other's equality, with equal values. Slots do not matter.
  friend bool operator==(VRELHashMap const& a, VRELHashMap const& b) {
    return a.table.IsEqual(b.table, [](auto const& one, int slot, auto const& other) {
      int const match = other.Find(one.rows.keys[slot]);
      return match >= 0 && static_cast<bool>(one.rows.values[slot] == other.rows.values[match]);
    });
  }
  friend bool operator!=(VRELHashMap const& a, VRELHashMap const& b) { return !(a == b); }

 private:
  V const* ValueAt(int slot) const noexcept { return slot < 0 ? nullptr : &table.rows.values[slot]; }

  VRELHashTable<K, V> table;
};
