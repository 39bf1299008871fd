// The set of the library: elements without order, each there once.
#pragma once

#include "detail/VRELHashTable.h"
#include "VRELHashTraits.h"

// Open addressing with linear probing: 17 slots at first, doubled before an entry would fill more than three quarters
// of them, never fewer again. Elements stand in place in flat arrays; T needs a default constructor, assignment, and to
// survive a move by byte copy (see VRELDynamicArray).
//
//   VRELHashList<void*> seen(17);
//   if (seen.Add(node)) Visit(node);
//
// A copy shares the arrays with its source and has a count and a cursor of its own: what is added through one is found
// through the other, whose Size does not change. The one cursor also means one enumeration at a time. Enumeration goes
// by slot and not by the order of coming; a rehash changes it. No locking. Throws VRELAllocException.
template <class T>
class VRELHashList {
 public:
  // The defaults, from VRELHashTraits<T>. A client may specialise them for a type of its own.
  static unsigned int GetHashValue(T const& element) { return VRELHashTraits<T>::Hash(element); }
  static bool HashEqualFunction(T const& a, T const& b) { return VRELHashTraits<T>::Equal(a, b); }

  // Below 1 slot it starts with none, and takes 17 when the first element comes.
  explicit VRELHashList(int slots = 17) : table(slots) {}
  VRELHashList(VRELHashList const&) = default;
  // Takes arrays, functions and count, and keeps the own cursor.
  VRELHashList& operator=(VRELHashList const&) = default;

  // A list with arrays of its own, the elements in the same slots.
  VRELHashList copy() const {
    VRELHashList result(*this);
    result.table.Unshare();
    return result;
  }

  int Size() const noexcept { return table.Size(); }

  // Instead of the defaults; null stands for the default. Call it before the first element comes.
  void SetFunctions(unsigned int (*hash)(T const&), bool (*equal)(T const&, T const&)) noexcept {
    table.SetFunctions(hash, equal);
  }
  unsigned int GetHashCode(T const& element) const { return table.GetHashCode(element); }
  bool CheckEqual(T const& a, T const& b) const { return table.CheckEqual(a, b); }

  // The slot of an element; -1 if it is not there.
  int Find(T const& element) const { return table.Find(element); }
  // Whether an element is there.
  bool Get(T const& element) const { return table.Find(element) >= 0; }

  // False if the element is there already; it stays as it is. May rehash even then.
  bool Add(T const& element) { return table.Add(element); }
  // Puts the element in the place of its equal, or adds it. Always true.
  bool Put(T const& element) {
    int const slot = table.Find(element);
    if (slot < 0) return table.Add(element);
    table.rows.keys[slot] = element;
    return true;
  }
  // Whether the element was there.
  bool Remove(T const& element) { return table.Remove(element); }
  // Leaves 17 free slots, whatever their number was. The cursor stays.
  void Clear() { table.Clear(); }

  // Places all elements anew in this many slots, or in as many as there are elements. One that meets an equal, which
  // it had not met before, is dropped and still counted; that is promised.
  void Rehash(int slots) { table.Rehash(slots); }

  void InitEnumeration() const noexcept { table.InitEnumeration(); }
  // Consumes nothing.
  bool HasNext() const noexcept { return table.HasNext(); }
  // False at the end, with out untouched.
  bool GetNext(T& out) const {
    int const slot = table.GetNext();
    if (slot < 0) return false;
    out = table.rows.keys[slot];
    return true;
  }

 private:
  VRELHashTable<T, void> table;
};
