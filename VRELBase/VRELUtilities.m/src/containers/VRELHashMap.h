// The map of the library: values found by their keys.
#pragma once

#include "VRELHashList.h"
#include "detail/VRELHashTable.h"
#include "VRELPair.h"

// Open addressing with linear probing: 17 slots at first, doubled before an entry would fill more than three quarters
// of them, never fewer again. Keys and values stand in place in flat arrays; both types need a default constructor,
// assignment, and to survive a move by byte copy (see VRELDynamicArray).
//
//   VRELHashMap<VRELString, int> counts(17);
//   counts.Put(L"hub", 3);
//   int count = 0;
//   if (counts.Get(L"hub", count)) ...
//
// Keys are hashed and compared as VRELHashList<K> does, unless SetFunctions says otherwise.
//
// A copy shares the arrays with its source and has a count and a cursor of its own: what is added through one is found
// through the other, whose Size does not change. The one cursor also means one enumeration at a time. Enumeration goes
// by slot and not by the order of coming; a rehash changes it. No locking. Throws VRELAllocException.
template <class K, class V>
class VRELHashMap {
 public:
  // Below 1 slot it starts with none, and takes 17 when the first entry comes.
  explicit VRELHashMap(int slots = 17) : table(slots) {}
  VRELHashMap(VRELHashMap const&) = default;
  // Takes arrays, functions and count, and keeps the own cursor.
  VRELHashMap& operator=(VRELHashMap const&) = default;

  int Size() const noexcept { return table.Size(); }

  // Instead of the defaults; null stands for the default. Call it before the first entry comes.
  void SetFunctions(unsigned int (*hash)(K const&), bool (*equal)(K const&, K const&)) noexcept {
    table.SetFunctions(hash, equal);
  }
  unsigned int GetHashCode(K const& key) const { return table.GetHashCode(key); }
  bool CheckEqual(K const& a, K const& b) const { return table.CheckEqual(a, b); }

  // The slot of a key; -1 if it is not there.
  int FindKey(K const& key) const { return table.Find(key); }
  // Assigns the key's value to out; false if the key is not there, with out untouched.
  bool Get(K const& key, V& out) const {
    int const slot = table.Find(key);
    if (slot < 0) return false;
    out = table.rows.values[slot];
    return true;
  }

  // The value of the key that satisfies `equals(K const&)`, for a client that has what it looks for in another form
  // than K: the hash is that of the key, and what satisfies `equals` is equal to it. Null if the key is not there; good
  // until the next change.
  template <class Equals>
  V const* GetEqual(unsigned int hash, Equals const& equals) const {
    int const slot = table.FindEqual(hash, equals);
    return slot < 0 ? nullptr : &table.rows.values[slot];
  }

  // False if the key is there already; its value stays. May rehash even then.
  bool Add(K const& key, V const& value) { return table.Add(key, value); }
  // Replaces the key's value, or adds it. Always true.
  bool Put(K const& key, V const& value) {
    int const slot = table.Find(key);
    if (slot < 0) return table.Add(key, value);
    table.rows.values[slot] = value;
    return true;
  }
  // Whether the key was there.
  bool Remove(K const& key) { return table.Remove(key); }
  // Leaves 17 free slots, whatever their number was. The cursor stays.
  void Clear() { table.Clear(); }

  // Places all entries anew in this many slots, or in as many as there are entries. One whose key meets an equal, which
  // it had not met before, is dropped and still counted; that is promised.
  void Rehash(int slots) { table.Rehash(slots); }

  void InitEnumeration() const noexcept { table.InitEnumeration(); }
  // Consumes nothing.
  bool HasNext() const noexcept { return table.HasNext(); }
  // False at the end, with out untouched.
  bool GetNext(VRELPair<K, V>& out) const {
    int const slot = table.GetNext();
    if (slot < 0) return false;
    out.key = table.rows.keys[slot];
    out.value = table.rows.values[slot];
    return true;
  }
  // Passes what GetNext would give, without a copy of it. False at the end.
  bool SkipNext() const noexcept { return table.GetNext() >= 0; }

 private:
  VRELHashTable<K, V> table;
};
