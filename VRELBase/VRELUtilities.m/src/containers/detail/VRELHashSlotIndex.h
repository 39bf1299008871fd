// Finds the slots of a hash table in constant time, however long its probe runs are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <set>
#include <utility>
#include <vector>

// Secondary index of an open-addressing table whose keys collide under its hash.
//
// A search with linear probing ends at the first equal key of the probe run, or at the first vacant slot after it. Both
// are found here without a visit of the slots between:
//
// - Vacant slots are bits of a bitmap, with a bitmap above it that has one bit for each nonzero word of the one below,
//   and so on up to a single word. A search goes up until a word has a bit at or after the slot, and then down again.
// - Occupied slots are in chains by a second hash of their keys, which an attacker cannot predict. A chain has one slot
//   for each hash. If several keys have the same hash, which happens for keys that are equal and yet in different runs,
//   all their slots are in an ordered set in addition, so that the first one after a given slot is found in
//   logarithmic time.
//
// A slot can be removed for a while: it is in no chain any more and still counts as occupied, until the table has moved
// the entries after it and makes it vacant.
//
// Operations that change the index throw std::bad_alloc; it is not usable afterwards, except after ReserveRemoved.
class VRELHashSlotIndex {
 public:
  explicit VRELHashSlotIndex(int slotCount)
      : slots(slotCount),
        heads(static_cast<std::size_t>(slotCount), kNone),
        entries(static_cast<std::size_t>(slotCount)) {
    for (std::size_t bits = static_cast<std::size_t>(slotCount); vacant.empty() || bits > 1;) {
      std::size_t const words = (bits + 63) / 64;
      vacant.emplace_back(words, ~std::uint64_t{0});
      if (bits % 64 != 0) vacant.back().back() = (std::uint64_t{1} << bits % 64) - 1;
      bits = words;
    }
  }

  // Adds a vacant slot, whose key has this second hash.
  void Add(int slot, std::uint64_t hash) {
    int const chained = FindChained(hash);
    Entry& added = At(slot);
    added.hash = hash;
    added.isRepeated = false;
    if (chained == kNone) {
      Link(slot);
    } else {
      if (!At(chained).isRepeated) repeated.emplace(hash, chained);
      At(chained).isRepeated = true;
      repeated.emplace(hash, slot);
    }
    SetVacant(slot, false);
  }

  // Removes an occupied slot.
  void Remove(int slot) {
    TakeFromChain(slot);
    SetVacant(slot, true);
  }

  // Removes an occupied slot that stays occupied until MakeVacant.
  // Requires: HasRepeated() is false, and ReserveRemoved was called before.
  void RemoveForNow(int slot) noexcept {
    removed.push_back(slot);
    TakeFromChain(slot);
  }
  void ReserveRemoved() {
    if (removed.size() == removed.capacity()) removed.reserve(2 * removed.size() + 16);
  }
  // Makes a slot that RemoveForNow has removed vacant.
  void MakeVacant(int slot) noexcept { SetVacant(slot, true); }
  // Returns whether RemoveForNow has removed slots since the last TakeRemoved.
  bool HasRemoved() const noexcept { return !removed.empty(); }
  // Returns these slots, and forgets them.
  std::vector<int> TakeRemoved() noexcept { return std::exchange(removed, {}); }

  // Returns the hash of an occupied slot.
  std::uint64_t HashAt(int slot) const noexcept { return At(slot).hash; }
  // Returns whether several slots have the same hash.
  bool HasRepeated() const noexcept { return !repeated.empty(); }
  // Returns a slot with the hash, or -1.
  int FindAny(std::uint64_t hash) const noexcept { return FindChained(hash); }

  int Distance(int from, int to) const noexcept { return to >= from ? to - from : slots - from + to; }

  // Returns the first vacant slot at or after `start`, going on from slot 0 after the last one; -1 if there is none.
  int FindVacant(int start) const noexcept {
    int const slot = FindVacantFrom(static_cast<std::size_t>(start));
    return slot != kNone || start == 0 ? slot : FindVacantFrom(0);
  }

  // Returns the first slot at or after `start` and before `end` whose key has the second hash and for which
  // accept(slot) holds; -1 if there is none. The search goes on from slot 0 after the last one; an `end` of -1 means a
  // whole round.
  template <class Accept>
  int Find(std::uint64_t hash, int start, int end, Accept const& accept) const {
    int const chained = FindChained(hash);
    if (chained == kNone) return kNone;
    int const limit = end < 0 ? slots : Distance(start, end);
    auto const matches = [&](int slot) { return Distance(start, slot) < limit && accept(slot); };
    if (!At(chained).isRepeated) return matches(chained) ? chained : kNone;
    auto const first = repeated.lower_bound({hash, start});
    for (auto each = first; each != repeated.end() && each->first == hash; ++each) {
      if (Distance(start, each->second) >= limit) return kNone;
      if (matches(each->second)) return each->second;
    }
    for (auto each = repeated.lower_bound({hash, 0}); each != first; ++each) {
      if (Distance(start, each->second) >= limit) return kNone;
      if (matches(each->second)) return each->second;
    }
    return kNone;
  }

 private:
  static constexpr int kNone = -1;

  struct Entry {
    std::uint64_t hash = 0;
    int next = kNone;
    bool isRepeated = false;  // of a chained slot: whether its hash is in `repeated`
  };

  void TakeFromChain(int slot) {
    std::uint64_t const hash = At(slot).hash;
    int chained = FindChained(hash);
    bool const isRepeated = At(chained).isRepeated;
    if (isRepeated) repeated.erase({hash, slot});
    auto const left = repeated.lower_bound({hash, 0});
    if (chained == slot) {
      Unlink(slot);
      if (isRepeated) Link(chained = left->second);
    }
    if (isRepeated) {
      auto const second = std::next(left);
      bool const isLast = second == repeated.end() || second->first != hash;
      At(chained).isRepeated = !isLast;
      if (isLast) repeated.erase(left);
    }
  }

  Entry& At(int slot) noexcept { return entries[static_cast<std::size_t>(slot)]; }
  Entry const& At(int slot) const noexcept { return entries[static_cast<std::size_t>(slot)]; }

  int const& Head(std::uint64_t hash) const noexcept { return heads[static_cast<std::size_t>(hash % heads.size())]; }
  int& Head(std::uint64_t hash) noexcept { return heads[static_cast<std::size_t>(hash % heads.size())]; }

  int FindChained(std::uint64_t hash) const noexcept {
    int slot = Head(hash);
    while (slot != kNone && At(slot).hash != hash) slot = At(slot).next;
    return slot;
  }

  void Link(int slot) noexcept {
    int& head = Head(At(slot).hash);
    At(slot).next = head;
    head = slot;
  }

  void Unlink(int slot) noexcept {
    int* link = &Head(At(slot).hash);
    while (*link != slot) link = &At(*link).next;
    *link = At(slot).next;
  }

  void SetVacant(int slot, bool isVacant) noexcept {
    auto bit = static_cast<std::size_t>(slot);
    for (auto& level : vacant) {
      std::uint64_t& word = level[bit / 64];
      bool const wasZero = word == 0;
      std::uint64_t const mask = std::uint64_t{1} << bit % 64;
      word = isVacant ? word | mask : word & ~mask;
      // The level above changes only where a word becomes zero or nonzero.
      if (wasZero == (word == 0)) return;
      bit /= 64;
    }
  }

  int FindVacantFrom(std::size_t bit) const noexcept {
    for (std::size_t level = 0; level < vacant.size(); ++level) {
      std::size_t word = bit / 64;
      if (word < vacant[level].size()) {
        std::uint64_t const rest = vacant[level][word] >> bit % 64 << bit % 64;
        if (rest != 0) {
          std::size_t found = word * 64 + static_cast<std::size_t>(__builtin_ctzll(rest));
          while (level-- > 0) found = found * 64 + static_cast<std::size_t>(__builtin_ctzll(vacant[level][found]));
          return static_cast<int>(found);
        }
      }
      bit = word + 1;
    }
    return kNone;
  }

  int slots;
  std::vector<int> heads;
  std::vector<Entry> entries;
  std::set<std::pair<std::uint64_t, int>> repeated;
  std::vector<std::vector<std::uint64_t>> vacant;
  std::vector<int> removed;
};
