// The table that implements VRELHashMap and VRELHashList.
//
// Open addressing with linear probing (Knuth, The Art of Computer Programming, volume 3, section 6.4, algorithm L) over
// parallel arrays of keys, values and control bytes. Clients see the slots: enumeration is in slot order, so that the
// slot of each entry after each operation is part of the interface. The rules are:
//
// - A key's home is its hash modulo the number of slots. Its slot is the first vacant one from there on, going on from
//   slot 0 after the last one. A search ends at an equal key, at a vacant slot, or after one round.
// - The slots are doubled before an entry would fill more than three quarters of them. Entries move in slot order.
// - A removal leaves no tombstone. Each entry of the rest of the probe run is taken out and inserted again, in slot
//   order, so that no search ends at the vacant slot too early. Entries before the vacant slot would return to their
//   slots and are left alone.
//
// A control byte is 0 for a vacant slot, else a hash of the key, so that a search compares sixteen slots at once
// and reads only keys that can be equal. Plain keys (integers, pointers) are compared directly in small tables.
//
// Keys made to collide under the hash would make probe runs, and so each operation, as long as the table. If the traits
// of the key provide a second, seeded hash, an insertion that probes kLongRun slots builds an index of the table
// (VRELHashSlotIndex), which then finds the equal key and the vacant slot directly. Slots and results are the same with
// and without the index. If there is no memory for it, the table works without.
//
// A removal from a table with an index does not move the entries after the removed one at once, because it would move
// the whole rest of a long run. The slot is only marked. The entries are moved, all in one pass, before the next
// operation that depends on slots: anything but a removal and a search for the value of a key. The slots do not depend
// on when that happens: an entry goes to the first vacant slot from its home on, in slot order, and entries that
// compete for one vacant slot keep their order.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

#include "detail/VRELHashControlBytes.h"
#include "detail/VRELHashRows.h"
#include "detail/VRELHashSlotIndex.h"
#include "detail/VRELSwapObjectBytes.h"

template <class T>
class VRELHashList;

// Hash table of keys with values, or of keys alone if V is void. `values`, in the operations below, is the one value of
// an entry of a map, and nothing for a list.
template <class K, class V>
class VRELHashTable {
 public:
  using HashFunction = unsigned int (*)(K const&);
  using EqualFunction = bool (*)(K const&, K const&);

  using Rows = VRELHashRows<K, V>;

  static constexpr int kDefaultSlots = 17;

  explicit VRELHashTable(int slots) { Grow(rows, slots); }
  VRELHashTable(VRELHashTable const&) = default;
  // The source keeps its functions and has no slots until the next entry is added.
  VRELHashTable(VRELHashTable&& other) noexcept
      : rows(std::move(other.rows)),
        hashFunction(other.hashFunction),
        equalFunction(other.equalFunction),
        loadFactor(other.loadFactor),
        count(std::exchange(other.count, 0)),
        cursor(std::exchange(other.cursor, 0)) {}

  // Compatibility: load factor and cursor are not assigned.
  VRELHashTable& operator=(VRELHashTable const& other) {
    rows = other.rows;
    hashFunction = other.hashFunction;
    equalFunction = other.equalFunction;
    count = other.count;
    return *this;
  }
  VRELHashTable& operator=(VRELHashTable&& other) noexcept {
    if (this == &other) return *this;
    rows = std::move(other.rows);
    hashFunction = other.hashFunction;
    equalFunction = other.equalFunction;
    count = std::exchange(other.count, 0);
    return *this;
  }

  // Replaces the arrays by copies of their own.
  void Unshare() {
    Settle();
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

  // Returns the slot of a key, or -1.
  int Find(K const& key) const {
    Settle();
    return FindSettled(key);
  }

  // Returns the slot of the row of a key, or -1. The key may move to another slot before the next operation.
  int FindRow(K const& key) const {
    if constexpr (kCanBeIndexed) {
      if (IsUnsettled() && equalFunction == nullptr) {
        int const slot = IndexOf(rows)->FindAny(VRELHashTraits<K>::SeededHash(key));
        if (slot < 0 || !CheckEqual(key, rows.keys[slot])) return -1;
        // An equal key with another home is found only if the runs are connected.
        if (HomeIn(rows, GetHashCode(key)) == HomeIn(rows, GetHashCode(rows.keys[slot]))) return slot;
      }
    }
    return Find(key);
  }

  // Returns the slot of the entry whose key satisfies `equals`, or -1. `hash` and seededHash() are those of such a key.
  template <class Equals, class SeededHash>
  int FindEqual(unsigned int hash, Equals const& equals, SeededHash const& seededHash) const {
    Settle();
    int const slots = Slots();
    if (slots == 0) return -1;
    auto const start = static_cast<int>(hash % static_cast<unsigned int>(slots));
    int slot = start;
    for (int probes = 0; !IsVacant(slot); ++probes) {
      if constexpr (!std::is_same_v<SeededHash, std::nullptr_t>) {
        VRELHashSlotIndex const* const index = probes == kIndexedRun ? IndexOf(rows) : nullptr;
        if (index != nullptr) {
          return index->Find(seededHash(), start, index->FindVacant(start),
                             [&](int i) { return equals(rows.keys[i]); });
        }
      }
      if (equals(rows.keys[slot])) return slot;
      if (++slot == slots) slot = 0;
      if (slot == start) return -1;
    }
    return -1;
  }

  // Returns false, and changes no entry, if there is an equal key.
  template <class... Values>
  bool Add(K const& key, Values const&... values) {
    Settle();
    if (!IsTooFullFor(count + 1)) return Place(key, values...);
    // The arguments may be in the arrays that are replaced.
    return AddAfterRehash(K(key), Values(values)...);
  }

  // Returns whether the key was in the table.
  bool Remove(K const& key) {
    int const removed = FindRow(key);
    if (removed < 0) return false;
    if constexpr (kCanBeIndexed) {
      if (equalFunction == nullptr && IndexOf(rows) == nullptr && IsInLongRun(removed)) BuildIndex(rows);
      if (RemoveForNow(removed)) return true;
      if (IsUnsettled()) {
        Settle();
        // The entry may have moved.
        int const moved = FindSettled(key);
        return moved >= 0 && RemoveSettled(moved);
      }
    }
    return RemoveSettled(removed);
  }

  void Clear() {
    rows.ForEachColumn([](auto& column) { column.clear(); }, rows);
    rows.occupied.clear();
    count = 0;
    Grow(rows, kDefaultSlots);
  }

  void Rehash(int slots) {
    Settle();
    Rows fresh;
    Grow(fresh, AtLeastOccupied(slots));
    // Keys that collided will mostly do so again.
    if (IndexOf(rows) != nullptr) BuildIndex(fresh);
    // If a copy of the container has the same arrays, entries are copied, otherwise moved.
    bool const shared = rows.keys.isShared();
    for (int row = 0, end = Slots(); row < end; ++row) {
      if (IsVacant(row)) continue;
      LazySeededHash seededHash = SeededHashAt(row);
      int const slot = ProbeForInsertion(fresh, rows.keys[row], rows.occupied[row], seededHash).vacant;
      if (slot < 0) continue;
      auto const transfer = [=](auto& to, auto& from) {
        if (shared) {
          to[slot] = from[row];
        } else {
          VRELSwapObjectBytes(to[slot], from[row]);
        }
      };
      rows.ForEachColumn(transfer, fresh, rows);
      SetOccupied(fresh, slot, rows.occupied[row], seededHash);
    }
    rows = std::move(fresh);
  }

  // Doubles the slots, as additions do, until that many entries fit.
  void Reserve(int entries) {
    int slots = Slots();
    while (entries > static_cast<double>(loadFactor) * slots && slots < std::numeric_limits<int>::max()) {
      slots = Doubled(slots);
    }
    if (slots > Slots()) Rehash(slots);
  }

  void InitEnumeration() const noexcept { cursor = 0; }

  bool HasNext() const noexcept {
    Settle();
    return FindOccupied(cursor) >= 0;
  }

  // Returns the next occupied slot and moves the cursor past it; -1 at the end.
  int GetNext() const noexcept {
    Settle();
    int const slot = FindOccupied(cursor);
    if (slot >= 0) cursor = slot + 1;
    return slot;
  }

  // Returns the first occupied slot, or -1.
  int FindFirst() const noexcept {
    Settle();
    return FindOccupied(0);
  }
  // Returns the first occupied slot from `first` on, or -1. Skips eight vacant slots at once.
  int FindOccupied(int first) const noexcept {
    unsigned char const* const occupied = rows.occupied.getArray();
    int const end = Slots();
    int slot = first;
    for (std::uint64_t bytes = 0; end - slot >= 8; slot += 8) {
      std::memcpy(&bytes, occupied + slot, sizeof bytes);
      if (bytes != 0) break;
    }
    for (; slot < end; ++slot) {
      if (occupied[slot] != ControlBytes::kVacant) return slot;
    }
    return -1;
  }

  // Calls visit(slot, key) for each occupied slot, in order. `visit` must not change the table.
  template <class Visit>
  void ForEachOccupied(Visit const& visit) const {
    Settle();
    unsigned char const* const occupied = rows.occupied.getArray();
    K const* const keys = rows.keys.getArray();
    int const end = Slots();
    int slot = 0;
    for (; end - slot >= VRELHashGroup::kSize; slot += VRELHashGroup::kSize) {
      unsigned int left = ~VRELHashGroup(occupied + slot, ControlBytes::kAny).vacant & 0xFFFF;
      for (; left != 0; left &= left - 1) visit(slot + __builtin_ctz(left), keys[slot + __builtin_ctz(left)]);
    }
    for (; slot < end; ++slot) {
      if (occupied[slot] != ControlBytes::kVacant) visit(slot, keys[slot]);
    }
  }

  // Returns whether a slot, which may be one that the table no longer has, has that key.
  bool HasAt(int slot, K const& key) const noexcept {
    return slot < Slots() && rows.keys[slot] == key && !IsVacant(slot);
  }

  // Returns whether both tables have the same number of entries and isInOther(other, slot) holds for each slot of
  // either one.
  template <class IsInOther>
  bool IsEqual(VRELHashTable const& other, IsInOther const& isInOther) const {
    Settle();
    other.Settle();
    if (CountOccupied() != other.CountOccupied()) return false;
    for (int slot = FindOccupied(0); slot >= 0; slot = FindOccupied(slot + 1)) {
      if (!isInOther(*this, slot, other)) return false;
    }
    for (int slot = other.FindOccupied(0); slot >= 0; slot = other.FindOccupied(slot + 1)) {
      if (!isInOther(other, slot, *this)) return false;
    }
    return true;
  }

  Rows rows;

 private:
  // Where a search ended: at the key, or at a vacant slot. Both are -1 after a round through a full table.
  struct ProbeResult {
    int match;
    int vacant;
  };

  using ControlBytes = VRELHashControlBytes<K>;

  // The second hash of a key, computed at its first use.
  struct LazySeededHash {
    std::uint64_t Of(K const& key) {
      if (!isKnown) value = VRELHashTraits<K>::SeededHash(key);
      isKnown = true;
      return value;
    }

    std::uint64_t value = 0;
    bool isKnown = false;
  };

  // Keys that are compared as fast as their control bytes.
  static constexpr bool kIsPlain = std::is_pointer_v<K> || std::is_integral_v<K>;

  static constexpr bool kCanBeIndexed = VRELHasSeededHash<K>::value;

  // A table of that many slots is in the cache: reading the key of the first slot is cheaper than computing the control
  // byte, and plain keys need none.
  static constexpr unsigned int kFewSlots = 4096;

  // The probes after which an insertion builds the index, and after which a search uses it. Hashes that are not made
  // to collide need the first number of probes less than once in 10^8 insertions.
  static constexpr int kLongRun = 512;
  static constexpr int kIndexedRun = 16;

  // A run of this length with few different homes is one of keys that were made to collide.
  static constexpr int kSuspectRun = 128;
  static constexpr int kSampledKeys = 8;

  static void Grow(Rows& target, int slots) {
    target.ForEachColumn([=](auto& column) { column.endGrow(slots); }, target);
    // Last, because it defines the number of slots: if memory is exhausted there are none.
    target.occupied.endGrow(slots);
  }

  bool IsVacant(int slot) const noexcept { return rows.occupied[slot] == ControlBytes::kVacant; }

  int Slots() const noexcept { return rows.occupied.size(); }

  // Returns whether that many entries are too many for the slots. Also true if there is no slot at all.
  bool IsTooFullFor(int entries) const noexcept {
    return entries > static_cast<double>(loadFactor) * Slots() || Slots() < 1;
  }

  static int Doubled(int slots) noexcept {
    if (slots < 1) return kDefaultSlots;
    return slots > std::numeric_limits<int>::max() / 2 ? std::numeric_limits<int>::max() : 2 * slots;
  }

  int CountOccupied() const noexcept {
    int occupied = 0;
    for (unsigned char const each : rows.occupied) occupied += each != ControlBytes::kVacant ? 1 : 0;
    return occupied;
  }

  int AtLeastOccupied(int slots) const noexcept {
    int const occupied = CountOccupied();
    return slots < occupied ? occupied : slots;
  }

  // Loads key and value of a slot into the cache while its control byte is compared.
  void PrefetchRow(int slot) const noexcept {
    rows.ForEachColumn([=](auto& column) { __builtin_prefetch(column.getArray() + slot); }, rows);
  }

  // Find for plain keys in a large table, where a search for a missing key mostly reads no other key. A function of its
  // own, so that the path for small tables stays short.
  [[gnu::noinline]] int FindByControlByte(K const key, int start) const {
    PrefetchRow(start);
    unsigned char const* const occupied = rows.occupied.getArray();
    K const* const keys = rows.keys.getArray();
    int const controlByte = ControlBytes::Of(key);
    int slot = start;
    for (int end = Slots();; end = start) {
      for (; end - slot >= VRELHashGroup::kSize; slot += VRELHashGroup::kSize) {
        VRELHashGroup const group(occupied + slot, controlByte);
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

  static int HomeIn(Rows const& where, unsigned int hash) noexcept {
    return static_cast<int>(hash % static_cast<unsigned int>(where.occupied.size()));
  }

  int FindSettled(K const& key) const {
    auto const slots = static_cast<unsigned int>(rows.occupied.size());
    if (slots == 0) return -1;
    int const start = static_cast<int>(GetHashCode(key) % slots);
    if constexpr (ControlBytes::kExist && kIsPlain) {
      if (slots > kFewSlots && equalFunction == nullptr) return FindByControlByte(key, start);
    } else if constexpr (ControlBytes::kExist) {
      if (slots > kFewSlots) {
        PrefetchRow(start);
      } else if (IsVacant(start)) {
        return -1;
      } else if (CheckEqual(key, rows.keys[start])) {
        return start;
      }
    }
    return ProbeFrom(rows, key, ControlByteOf(key), start).match;
  }

  // Returns whether a sample of the kSuspectRun keys from a slot on has few different homes.
  // Requires: they are in one probe run.
  bool HasFewHomes(Rows const& where, int first) const {
    int homes[kSampledKeys];
    int different = 0;
    int const slots = where.occupied.size();
    for (int i = 0; i < kSampledKeys; ++i) {
      int const slot = static_cast<int>(
          (static_cast<unsigned int>(first) + static_cast<unsigned int>(kSuspectRun / kSampledKeys * i)) %
          static_cast<unsigned int>(slots));
      int const home = HomeIn(where, GetHashCode(where.keys[slot]));
      bool isKnown = false;
      for (int other = 0; other < different; ++other) isKnown = isKnown || homes[other] == home;
      if (!isKnown) homes[different++] = home;
    }
    return different <= kSampledKeys / 2;
  }

  // Returns whether the entries after a slot are many in one probe run, of keys that were made to collide.
  bool IsInLongRun(int first) const {
    int const slots = Slots();
    if (slots <= kLongRun) return false;
    for (int step = 1; step <= kLongRun; ++step) {
      int const slot = first + step < slots ? first + step : first + step - slots;
      if (IsVacant(slot)) return step > kSuspectRun && HasFewHomes(rows, first);
    }
    return true;
  }

  // Removes an entry and leaves those after it where they are until Settle. Returns false, with nothing changed, if
  // that is not possible.
  bool RemoveForNow([[maybe_unused]] int slot) {
    if constexpr (kCanBeIndexed) {
      VRELHashSlotIndex* const index = IndexOf(rows);
      // Keys with the same second hash may be equal, and one of them may be dropped when it is inserted again.
      if (index == nullptr || equalFunction != nullptr || index->HasRepeated() || index->FindVacant(0) < 0)
        return false;
      // A removal would double the slots.
      if (IsTooFullFor(count - 1)) return false;
      try {
        index->ReserveRemoved();
      } catch (std::bad_alloc const&) {
        return false;
      }
      ResetColumns(slot);
      rows.occupied[slot] = ControlBytes::kVacant;
      index->RemoveForNow(slot);
      --count;
      return true;
    }
    return false;
  }

  // Returns whether slots were removed for now.
  bool IsUnsettled() const noexcept {
    VRELHashSlotIndex const* const index = IndexOf(rows);
    return index != nullptr && index->HasRemoved();
  }

  // Moves the entries after slots that were removed for now. Const because it changes nothing that a client can see.
  void Settle() const noexcept {
    if constexpr (kCanBeIndexed) {
      if (IsUnsettled()) const_cast<VRELHashTable*>(this)->MoveAfterRemoved();
    }
  }

  [[gnu::noinline]] void MoveAfterRemoved() {
    VRELHashSlotIndex* const index = IndexOf(rows);
    int const slots = Slots();
    // Removed slots count as occupied, so that this one separates two runs.
    int const first = index->FindVacant(0);
    std::vector<int> removed = index->TakeRemoved();
    std::sort(removed.begin(), removed.end(),
              [=](int a, int b) { return index->Distance(first, a) < index->Distance(first, b); });
    int moved = 0;
    for (int const each : removed) {
      if (index->Distance(first, each) < moved) continue;
      int const end = index->FindVacant(each);
      for (int slot = each; slot != end; slot = slot + 1 == slots ? 0 : slot + 1) {
        if (IsVacant(slot)) {
          index->MakeVacant(slot);
        } else {
          Reinsert(slot);
        }
      }
      moved = end == first ? slots : index->Distance(first, end);
    }
  }

  bool RemoveSettled(int removed) {
    ResetColumns(removed);
    SetVacant(rows, removed);
    --count;
    ReinsertProbeRun(removed);
    return true;
  }

  // Searches for a key to be inserted: if the probe run is long, builds the index first.
  ProbeResult ProbeForInsertion(Rows& where, K const& key, int controlByte, LazySeededHash& seededHash) const {
    if (where.occupied.size() == 0) return {-1, -1};
    int const start = HomeIn(where, GetHashCode(key));
    if constexpr (kCanBeIndexed) {
      // Mostly the search ends here, without a look at the index.
      ProbeResult result = {-1, -1};
      if (ProbeUpTo(kIndexedRun, where, key, controlByte, start, result)) return result;
      if (where.occupied.size() > kLongRun && equalFunction == nullptr && IndexOf(where) == nullptr) {
        if (ProbeUpTo(kSuspectRun, where, key, controlByte, start, result)) return result;
        bool const isSuspect = HasFewHomes(where, start);
        if (!isSuspect && ProbeUpTo(kLongRun, where, key, controlByte, start, result)) return result;
        BuildIndex(where);
      }
      if (equalFunction == nullptr && IndexOf(where) != nullptr) {
        return ProbeByIndex(where, key, start, seededHash.Of(key));
      }
    }
    return ProbeFrom(where, key, controlByte, start);
  }

  ProbeResult ProbeByIndex(Rows const& where, K const& key, int start, std::uint64_t seededHash) const {
    VRELHashSlotIndex const& index = *IndexOf(where);
    int const vacant = index.FindVacant(start);
    int const match =
        index.Find(seededHash, start, vacant, [&](int slot) { return CheckEqual(key, where.keys[slot]); });
    return match >= 0 ? ProbeResult{match, -1} : ProbeResult{-1, vacant};
  }

  ProbeResult ProbeFrom(Rows const& where, K const& key, int controlByte, int start) const {
    ProbeResult result = {-1, -1};
    if constexpr (kCanBeIndexed) {
      if (equalFunction == nullptr && IndexOf(where) != nullptr) {
        if (ProbeUpTo(kIndexedRun, where, key, controlByte, start, result)) return result;
        return ProbeByIndex(where, key, start, VRELHashTraits<K>::SeededHash(key));
      }
    }
    if (ProbeRange(where, key, controlByte, start, where.occupied.size(), result)) return result;
    ProbeRange(where, key, controlByte, 0, start, result);
    return result;
  }

  // Returns whether the search ended within that many probes.
  bool ProbeUpTo(int probes, Rows const& where, K const& key, int controlByte, int start, ProbeResult& result) const {
    int const slots = where.occupied.size();
    int const atEnd = slots - start;
    if (probes <= atEnd) return ProbeRange(where, key, controlByte, start, start + probes, result);
    if (ProbeRange(where, key, controlByte, start, slots, result)) return true;
    int const wrapped = probes - atEnd;
    return ProbeRange(where, key, controlByte, 0, wrapped < start ? wrapped : start, result);
  }

  // Returns whether the search ended in this range.
  bool ProbeRange(Rows const& where, K const& key, int controlByte, int first, int end, ProbeResult& result) const {
    unsigned char const* const occupied = where.occupied.getArray();
    K const* const keys = where.keys.getArray();
    int slot = first;
    if constexpr (ControlBytes::kExist && !kIsPlain) {
      for (; end - slot >= VRELHashGroup::kSize; slot += VRELHashGroup::kSize) {
        VRELHashGroup const group(occupied + slot, controlByte);
        for (unsigned int left = group.candidates; left != 0; left &= left - 1) {
          int const candidate = slot + __builtin_ctz(left);
          if (!CheckEqual(key, keys[candidate])) continue;
          result.match = candidate;
          return true;
        }
        if (group.vacant == 0) continue;
        result.vacant = slot + __builtin_ctz(group.vacant);
        return true;
      }
    }
    for (; slot < end; ++slot) {
      if (IsVacant(occupied, keys, slot)) {
        result.vacant = slot;
        return true;
      }
      if (CheckEqual(key, keys[slot])) {
        result.match = slot;
        return true;
      }
    }
    return false;
  }

  // A vacant slot has a default key, so that a plain key that is not the default one marks an occupied slot without
  // reading the control byte.
  static bool IsVacant(unsigned char const* occupied, K const* keys, int slot) {
    bool const isOccupied = occupied[slot] != ControlBytes::kVacant;
    if constexpr (kIsPlain) return keys[slot] == K() && !isOccupied;
    return !isOccupied;
  }

  // Nothing is known about keys that are compared by a function of the client.
  unsigned char ControlByteOf(K const& key) const {
    return equalFunction == nullptr ? ControlBytes::Of(key) : ControlBytes::kAny;
  }

  static VRELHashSlotIndex* IndexOf([[maybe_unused]] Rows const& where) noexcept {
    if constexpr (kCanBeIndexed) {
      return where.occupied.GetIndex();
    } else {
      return nullptr;
    }
  }

  // Returns the second hash of the key at an occupied slot, known if there is an index.
  LazySeededHash SeededHashAt([[maybe_unused]] int slot) const noexcept {
    LazySeededHash seededHash;
    if constexpr (kCanBeIndexed) {
      VRELHashSlotIndex const* const index = IndexOf(rows);
      if (index != nullptr) seededHash = {index->HashAt(slot), true};
    }
    return seededHash;
  }

  // Leaves the table without an index if there is no memory for it.
  static void BuildIndex([[maybe_unused]] Rows& where) {
    if constexpr (kCanBeIndexed) {
      int const slots = where.occupied.size();
      if (slots < 1) return;
      try {
        auto index = std::make_unique<VRELHashSlotIndex>(slots);
        for (int slot = 0; slot < slots; ++slot) {
          if (where.occupied[slot] == ControlBytes::kVacant) continue;
          index->Add(slot, VRELHashTraits<K>::SeededHash(where.keys[slot]));
        }
        where.occupied.SetIndex(index.release());
      } catch (std::bad_alloc const&) {
      }
    }
  }

  // Marks a vacant slot, whose key is stored already, as occupied.
  static void SetOccupied(Rows& where, int slot, unsigned char controlByte,
                          [[maybe_unused]] LazySeededHash& seededHash) {
    where.occupied[slot] = controlByte;
    if constexpr (kCanBeIndexed) {
      VRELHashSlotIndex* const index = IndexOf(where);
      if (index == nullptr) return;
      try {
        index->Add(slot, seededHash.Of(where.keys[slot]));
      } catch (std::bad_alloc const&) {
        where.occupied.SetIndex(nullptr);
      }
    }
  }

  static void SetVacant(Rows& where, int slot) noexcept {
    where.occupied[slot] = ControlBytes::kVacant;
    if constexpr (kCanBeIndexed) {
      VRELHashSlotIndex* const index = IndexOf(where);
      if (index != nullptr) index->Remove(slot);
    }
  }

  template <class... Values>
  bool AddAfterRehash(K const& key, Values const&... values) {
    Rehash(Doubled(Slots()));
    return Place(key, values...);
  }

  template <class... Values>
  bool Place(K const& key, Values const&... values) {
    unsigned char const controlByte = ControlByteOf(key);
    LazySeededHash seededHash;
    ProbeResult const result = ProbeForInsertion(rows, key, controlByte, seededHash);
    if (result.match >= 0) return false;
    // Full, although the count allowed one more: a copy of the container has filled the shared arrays.
    if (result.vacant < 0) return AddAfterRehash(K(key), Values(values)...);
    // The value first, because its assignment may throw: a key without a control byte is no entry.
    ((rows.values[result.vacant] = values), ...);
    rows.keys[result.vacant] = key;
    SetOccupied(rows, result.vacant, controlByte, seededHash);
    ++count;
    return true;
  }

  void ResetColumns(int slot) {
    auto const reset = [=](auto& column) { column[slot] = std::decay_t<decltype(column[0])>(); };
    rows.ForEachColumn(reset, rows);
  }

  // Takes out each entry of the probe run after a slot that became vacant, and inserts it again.
  void ReinsertProbeRun(int freed) {
    int const slots = Slots();
    for (int step = 1; step < slots; ++step) {
      int const slot = static_cast<int>((static_cast<unsigned int>(freed) + static_cast<unsigned int>(step)) %
                                        static_cast<unsigned int>(slots));
      if (IsVacant(slot)) return;
      // An insertion would double the slots, which inserts all entries again.
      if (IsTooFullFor(count)) return Rehash(Doubled(Slots()));
      Reinsert(slot);
    }
  }

  void Reinsert(int slot) {
    unsigned char const controlByte = rows.occupied[slot];
    LazySeededHash seededHash = SeededHashAt(slot);
    K key = K();
    VRELSwapObjectBytes(key, rows.keys[slot]);
    SetVacant(rows, slot);
    ProbeResult const result = ProbeForInsertion(rows, key, controlByte, seededHash);
    if (result.match >= 0) {
      // The key equals one that was not equal, or not in its probe run, when it was added.
      ResetColumns(slot);
      --count;
      return;
    }
    // Exchanges the values of the two slots; the key at the vacant slot is a default one.
    if (result.vacant != slot) {
      auto const exchange = [=](auto& column) { VRELSwapObjectBytes(column[slot], column[result.vacant]); };
      rows.ForEachColumn(exchange, rows);
    }
    VRELSwapObjectBytes(key, rows.keys[result.vacant]);
    SetOccupied(rows, result.vacant, controlByte, seededHash);
  }

  HashFunction hashFunction = nullptr;
  EqualFunction equalFunction = nullptr;
  float loadFactor = 0.75F;
  int count = 0;
  mutable int cursor = 0;
};
