// Iteration over a hash list that changes meanwhile.
#pragma once

#include <cstddef>
#include <memory>

#include "VRELHashList.h"

// The elements that a list of pointers or numbers had at one moment, in the order of its enumeration.
//
//   VRELHashListSnapshot<Gk_Observer*> const snapshot(list);
//   for (auto const& entry : snapshot) {
//     if (snapshot.IsInList(entry)) entry.element->setInt(1);  // may change the list
//   }
//
// Neither the constructor nor IsInList moves the cursor of the list.
// Requires: the list exists as long as IsInList is called.
// Performance: an unchanged element is found in its slot, without a search. No allocation for lists of up to kFewSlots
// slots.
template <class T>
class VRELHashListSnapshot {
 public:
  struct Entry {
    T element;
    int slot;
  };

  static constexpr int kFewSlots = 34;  // the initial number, doubled once

  explicit VRELHashListSnapshot(VRELHashList<T> const& theList) : list(theList), first(few) {
    int const slots = list.table.rows.occupied.size();
    if (slots > kFewSlots) {
      many.reset(new Entry[static_cast<std::size_t>(slots)]);
      first = many.get();
    }
    Entry* next = first;
    list.table.ForEachOccupied([&](int slot, T const& element) { *next++ = {element, slot}; });
    last = next;
  }
  VRELHashListSnapshot(VRELHashListSnapshot const&) = delete;
  VRELHashListSnapshot& operator=(VRELHashListSnapshot const&) = delete;

  Entry const* begin() const noexcept { return first; }
  Entry const* end() const noexcept { return last; }

  // Returns whether the element of the entry is in the list now.
  bool IsInList(Entry const& entry) const {
    return list.table.HasAt(entry.slot, entry.element) || list.Get(entry.element);
  }

 private:
  VRELHashList<T> const& list;
  Entry few[kFewSlots];
  std::unique_ptr<Entry[]> many;
  Entry* first;
  Entry* last;
};
