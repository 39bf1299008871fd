// The table behind VRELHashMap and VRELHashList. Programs use those two.
#pragma once

#include <limits>
#include <type_traits>

#include "detail/VRELSwapObjectBytes.h"
#include "detail/VRELHashControlBytes.h"
#include "detail/VRELHashRows.h"

template <class T>
class VRELHashList;

// Open addressing with linear probing, and no marks of what was removed: a removal places the rest of its probe run
// anew. V is void for a list; `values` is the one value of a map's entry, and nothing for a list.
template <class K, class V>
class VRELHashTable {
 public:
  using HashFunction = unsigned int (*)(K const&);
  using EqualFunction = bool (*)(K const&, K const&);

  using Rows = VRELHashRows<K, V>;

  static constexpr int defaultSlots = 17;

  explicit VRELHashTable(int slots) { Grow(rows, slots); }
  VRELHashTable(VRELHashTable const&) = default;

  // Load factor and cursor stay as they are, which is promised.
  VRELHashTable& operator=(VRELHashTable const& other) {
    rows = other.rows;
    hashFunction = other.hashFunction;
    equalFunction = other.equalFunction;
    count = other.count;
    return *this;
  }

  // Goes on with arrays of its own.
  void Unshare() {
    rows.ForEachColumn([](auto& column) { column = column.copy(); }, rows);
    rows.occupied = rows.occupied.copy();
  }

  int Size() const noexcept { return count; }

  void SetFunctions(HashFunction hash, EqualFunction equal) noexcept {
    hashFunction = hash;
    equalFunction = equal;
  }

  unsigned int GetHashCode(K const& key) const {
    return hashFunction != nullptr ? hashFunction(key) : VRELHashList<K>::GetHashValue(key);
  }

  bool CheckEqual(K const& a, K const& b) const {
    return equalFunction != nullptr ? equalFunction(a, b) : VRELHashList<K>::HashEqualFunction(a, b);
  }

  int Find(K const& key) const {
    auto const slots = static_cast<unsigned int>(rows.occupied.size());
    if (slots == 0) return -1;
    int const start = static_cast<int>(GetHashCode(key) % slots);
    if constexpr (Marks::exist && isPlain) {
      if (slots > fewSlots && equalFunction == nullptr) return FindByMark(key, start);
    } else if constexpr (Marks::exist) {
      if (slots > fewSlots) {
        PrefetchRow(start);
      } else if (IsVacant(start)) {
        return -1;
      } else if (CheckEqual(key, rows.keys[start])) {
        return start;
      }
    }
    return ProbeFrom(rows, key, MarkOf(key), start).match;
  }

  // The slot of the entry whose key satisfies `equals`; the hash is that of such a key. -1 if it is not there.
  template <class Equals>
  int FindEqual(unsigned int hash, Equals const& equals) const {
    auto const slots = static_cast<unsigned int>(rows.occupied.size());
    if (slots == 0) return -1;
    auto const start = static_cast<int>(hash % slots);
    int slot = start;
    while (!IsVacant(slot)) {
      if (equals(rows.keys[slot])) return slot;
      if (++slot == Slots()) slot = 0;
      if (slot == start) return -1;
    }
    return -1;
  }

  template <class... Values>
  bool Add(K const& key, Values const&... values) {
    if (!IsTooFullFor(count + 1)) return Place(key, values...);
    // The arguments may stand in the arrays that go.
    return AddAfterRehash(K(key), Values(values)...);
  }

  bool Remove(K const& key) {
    int const removed = Find(key);
    if (removed < 0) return false;
    Reset(removed);
    --count;
    ReinsertProbeRun(removed);
    return true;
  }

  void Clear() {
    rows.ForEachColumn([](auto& column) { column.clear(); }, rows);
    rows.occupied.clear();
    count = 0;
    Grow(rows, defaultSlots);
  }

  void Rehash(int slots) {
    Rows fresh;
    Grow(fresh, AtLeastOccupied(slots));
    // A copy of the container may hold the same arrays.
    bool const shared = rows.keys.isShared();
    for (int row = 0, end = Slots(); row < end; ++row) {
      if (IsVacant(row)) continue;
      int const slot = Probe(fresh, rows.keys[row], rows.occupied[row]).vacant;
      if (slot < 0) continue;
      auto const transfer = [=](auto& to, auto& from) {
        if (shared) {
          to[slot] = from[row];
        } else {
          VRELSwapObjectBytes(to[slot], from[row]);
        }
      };
      rows.ForEachColumn(transfer, fresh, rows);
      fresh.occupied[slot] = rows.occupied[row];
    }
    rows = fresh;
  }

  void InitEnumeration() const noexcept { cursor = 0; }

  bool HasNext() const noexcept { return NextOccupied() >= 0; }

  // The slot that comes next, which the cursor then passes; -1 at the end.
  int GetNext() const noexcept {
    int const slot = NextOccupied();
    if (slot >= 0) cursor = slot + 1;
    return slot;
  }

  Rows rows;

 private:
  // Where a search ended: at the key, or at a free slot. Both are -1 after a round through a full table.
  struct Ending {
    int match;
    int vacant;
  };

  using Marks = VRELHashControlBytes<K>;

  // Keys that are compared as fast as their marks.
  static constexpr bool isPlain = std::is_pointer_v<K> || std::is_integral_v<K>;

  // A table of so many slots stays near: there the key of the first slot is cheaper to look at than its mark, and plain
  // keys need none.
  static constexpr unsigned int fewSlots = 4096;

  static void Grow(Rows& target, int slots) {
    target.ForEachColumn([=](auto& column) { column.endGrow(slots); }, target);
    // Last, as it tells the number of slots: where memory runs out there are none.
    target.occupied.endGrow(slots);
  }

  bool IsVacant(int slot) const noexcept { return rows.occupied[slot] == Marks::vacant; }

  int Slots() const noexcept { return rows.occupied.size(); }

  // Whether this many entries are too many for the slots there are. Also where there is no slot at all.
  bool IsTooFullFor(int entries) const noexcept {
    return entries > static_cast<double>(loadFactor) * Slots() || Slots() < 1;
  }

  int DoubleSlots() const noexcept {
    int const slots = Slots();
    if (slots < 1) return defaultSlots;
    return slots > std::numeric_limits<int>::max() / 2 ? std::numeric_limits<int>::max() : 2 * slots;
  }

  // The number of slots asked for, or that of the entries that need one.
  int AtLeastOccupied(int slots) const noexcept {
    int occupied = 0;
    for (unsigned char const mark : rows.occupied) occupied += mark != Marks::vacant ? 1 : 0;
    return slots < occupied ? occupied : slots;
  }

  // Key and value of a slot are on their way while its mark is looked at.
  void PrefetchRow(int slot) const noexcept {
    rows.ForEachColumn([=](auto& column) { __builtin_prefetch(column.getArray() + slot); }, rows);
  }

  // Find for plain keys among many slots, where a miss mostly reads no other key. Apart, so that the way through few
  // slots stays short.
  [[gnu::noinline]] int FindByMark(K const key, int start) const {
    PrefetchRow(start);
    unsigned char const* const occupied = rows.occupied.getArray();
    K const* const keys = rows.keys.getArray();
    int const mark = Marks::Of(key);
    int slot = start;
    for (int end = Slots();; end = start) {
      for (; end - slot >= VRELHashGroup::size; slot += VRELHashGroup::size) {
        VRELHashGroup const group(occupied + slot, mark);
        for (unsigned int left = group.candidates; left != 0; left &= left - 1) {
          int const candidate = slot + __builtin_ctz(left);
          if (VRELHashList<K>::HashEqualFunction(key, keys[candidate])) return candidate;
        }
        if (group.vacant != 0) return -1;
      }
      for (; slot < end; ++slot) {
        if (IsVacant(slot)) return -1;
        if (VRELHashList<K>::HashEqualFunction(key, keys[slot])) return slot;
      }
      if (end == start) return -1;
      slot = 0;
    }
  }

  // From the slot of the key's hash to the end, then from the front, until the key or a free slot is met.
  Ending Probe(Rows const& where, K const& key, int mark) const {
    auto const slots = static_cast<unsigned int>(where.occupied.size());
    if (slots == 0) return {-1, -1};
    return ProbeFrom(where, key, mark, static_cast<int>(GetHashCode(key) % slots));
  }

  Ending ProbeFrom(Rows const& where, K const& key, int mark, int start) const {
    Ending ending = {-1, -1};
    if (ProbeRange(where, key, mark, start, where.occupied.size(), ending)) return ending;
    ProbeRange(where, key, mark, 0, start, ending);
    return ending;
  }

  // Whether the search ended in this range.
  bool ProbeRange(Rows const& where, K const& key, int mark, int first, int end, Ending& ending) const {
    unsigned char const* const occupied = where.occupied.getArray();
    K const* const keys = where.keys.getArray();
    int slot = first;
    if constexpr (Marks::exist && !isPlain) {
      for (; end - slot >= VRELHashGroup::size; slot += VRELHashGroup::size) {
        VRELHashGroup const group(occupied + slot, mark);
        for (unsigned int left = group.candidates; left != 0; left &= left - 1) {
          int const candidate = slot + __builtin_ctz(left);
          if (!CheckEqual(key, keys[candidate])) continue;
          ending.match = candidate;
          return true;
        }
        if (group.vacant == 0) continue;
        ending.vacant = slot + __builtin_ctz(group.vacant);
        return true;
      }
    }
    for (; slot < end; ++slot) {
      if (IsVacant(occupied, keys, slot)) {
        ending.vacant = slot;
        return true;
      }
      if (CheckEqual(key, keys[slot])) {
        ending.match = slot;
        return true;
      }
    }
    return false;
  }

  // A free slot holds a default key, so that for plain keys another one tells it without a look at the flags.
  static bool IsVacant(unsigned char const* occupied, K const* keys, int slot) {
    bool const isFlagged = occupied[slot] != Marks::vacant;
    if constexpr (isPlain) return keys[slot] == K() && !isFlagged;
    return !isFlagged;
  }

  // Nothing is known about keys that are equal by a function of the client.
  unsigned char MarkOf(K const& key) const { return equalFunction == nullptr ? Marks::Of(key) : Marks::any; }

  template <class... Values>
  bool AddAfterRehash(K const& key, Values const&... values) {
    Rehash(DoubleSlots());
    return Place(key, values...);
  }

  template <class... Values>
  bool Place(K const& key, Values const&... values) {
    unsigned char const mark = MarkOf(key);
    Ending const ending = Probe(rows, key, mark);
    if (ending.match >= 0) return false;
    // Full, although the count allowed one more: a copy of the container has filled the arrays that both hold.
    if (ending.vacant < 0) return AddAfterRehash(K(key), Values(values)...);
    // The value first, which may throw: a key without one could be taken for an entry.
    ((rows.values[ending.vacant] = values), ...);
    rows.keys[ending.vacant] = key;
    rows.occupied[ending.vacant] = mark;
    ++count;
    return true;
  }

  void Reset(int slot) {
    auto const reset = [=](auto& column) { column[slot] = std::decay_t<decltype(column[0])>(); };
    rows.ForEachColumn(reset, rows);
    rows.occupied[slot] = Marks::vacant;
  }

  // Takes each entry of the probe run behind a slot that became free, and adds it again. What stands in front of that
  // slot would only come back to where it is.
  void ReinsertProbeRun(int freed) {
    int const slots = Slots();
    for (int step = 1; step < slots; ++step) {
      int const slot = static_cast<int>((static_cast<unsigned int>(freed) + static_cast<unsigned int>(step)) %
                                        static_cast<unsigned int>(slots));
      if (IsVacant(slot)) return;
      // To add it again would double the slots, which places everything anew.
      if (IsTooFullFor(count)) return Rehash(DoubleSlots());
      PlaceAnew(slot);
    }
  }

  void PlaceAnew(int slot) {
    unsigned char const mark = rows.occupied[slot];
    K key = K();
    VRELSwapObjectBytes(key, rows.keys[slot]);
    rows.occupied[slot] = Marks::vacant;
    Ending const ending = Probe(rows, key, mark);
    if (ending.match >= 0) {
      // It has met an equal key, which it had not met when it came.
      Reset(slot);
      --count;
      return;
    }
    // The places of two values change; the key that is exchanged with is a free slot's.
    if (ending.vacant != slot) {
      auto const exchange = [=](auto& column) { VRELSwapObjectBytes(column[slot], column[ending.vacant]); };
      rows.ForEachColumn(exchange, rows);
    }
    VRELSwapObjectBytes(key, rows.keys[ending.vacant]);
    rows.occupied[ending.vacant] = mark;
  }

  int NextOccupied() const noexcept {
    for (int slot = cursor, end = Slots(); slot < end; ++slot) {
      if (!IsVacant(slot)) return slot;
    }
    return -1;
  }

  HashFunction hashFunction = nullptr;
  EqualFunction equalFunction = nullptr;
  float loadFactor = 0.75F;
  int count = 0;
  mutable int cursor = 0;
};
