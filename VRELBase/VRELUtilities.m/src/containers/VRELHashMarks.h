// What a hash container notes of its keys, so that a search passes those that cannot be equal without reading them.
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "VRELDynamicArray.h"
#include "VRELHashTraits.h"

// The zero bytes of a word, by their highest bits. Bytes behind the first zero may be named wrongly.
constexpr std::uint64_t VRELZeroBytes(std::uint64_t word) noexcept {
  return (word - 0x0101010101010101U) & ~word & 0x8080808080808080U;
}

// One byte for each slot, for key types whose VRELHashTraits have
//
//   static unsigned char Mark(K const& key);
//
// Keys with different marks are never equal by VRELHashTraits<K>::Equal, except that `any` stands for a key of which
// nothing is known. No key has the mark `vacant`, which a free slot has. Without that operation there are no bytes.
template <class K, class = void>
class VRELHashMarks {
 public:
  static constexpr bool exist = false;
  static constexpr unsigned char vacant = 0;
  static constexpr unsigned char any = 1;

  static unsigned char Of(K const&) noexcept { return any; }
  void endGrow(int) noexcept {}
  void clear() noexcept {}
  void Unshare() noexcept {}
  unsigned char Get(int) const noexcept { return any; }
  void Set(int, unsigned char) noexcept {}
};

template <class K>
class VRELHashMarks<K, std::void_t<decltype(&VRELHashTraits<K>::Mark)>> {
 public:
  static constexpr bool exist = true;
  static constexpr unsigned char vacant = 0;
  static constexpr unsigned char any = 1;

  static unsigned char Of(K const& key) { return VRELHashTraits<K>::Mark(key); }
  void endGrow(int slots) { marks.endGrow(slots); }
  void clear() { marks.clear(); }
  void Unshare() { marks = marks.copy(); }
  unsigned char Get(int slot) const noexcept { return marks[slot]; }
  void Set(int slot, unsigned char mark) noexcept { marks[slot] = mark; }

  // Among eight slots from this one on, those that are free and those whose keys may be equal to one with this mark:
  // the highest bit of their bytes. Behind the first of them others may be named too.
  std::uint64_t Candidates(int slot, unsigned char mark) const noexcept {
    constexpr std::uint64_t each = 0x0101010101010101U;
    if (mark == any) return VRELZeroBytes(0);
    std::uint64_t eight;
    std::memcpy(&eight, marks.getArray() + slot, sizeof eight);
    return VRELZeroBytes(eight) | VRELZeroBytes(eight ^ mark * each) | VRELZeroBytes(eight ^ any * each);
  }

 private:
  VRELDynamicArray<unsigned char> marks;
};
