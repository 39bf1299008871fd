// What a hash container notes of its keys, so that a search passes those that cannot be equal without reading them.
#pragma once

#include <type_traits>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "VRELHashTraits.h"

// The byte that says of a slot that it is occupied: 0 for a free one, else the mark of its key. A key type brings marks
// by an operation of its VRELHashTraits:
//
//   static unsigned char Mark(K const& key);
//
// Keys with different marks are never equal by VRELHashTraits<K>::Equal, except that `any` stands for a key of which
// nothing is known. No key has the mark `vacant`. Without that operation every key has the mark `any`.
template <class K, class = void>
class VRELHashControlBytes {
 public:
  static constexpr bool exist = false;
  static constexpr unsigned char vacant = 0;
  static constexpr unsigned char any = 1;

  static unsigned char Of(K const&) noexcept { return any; }
};

template <class K>
class VRELHashControlBytes<K, std::void_t<decltype(&VRELHashTraits<K>::Mark)>> {
 public:
  static constexpr bool exist = true;
  static constexpr unsigned char vacant = 0;
  static constexpr unsigned char any = 1;

  static unsigned char Of(K const& key) { return VRELHashTraits<K>::Mark(key); }
};

// Sixteen slots in a row, as a search for a key meets them: a bit for each, the lowest for the first of them.
struct VRELHashGroup {
  static constexpr int size = 16;

  // Of the slots that begin with this one, for a key with this mark. An int, so that it need not be widened on its way.
  VRELHashGroup(unsigned char const* marks, int mark) noexcept {
    vacant = Equal(marks, 0);
    unsigned int const equal = mark == 1 ? ~vacant : Equal(marks, mark) | Equal(marks, 1);
    candidates = equal & (vacant - 1) & 0xFFFF;
  }

  unsigned int vacant;      // free slots
  unsigned int candidates;  // those in front of the first free one whose keys may be equal

 private:
  static unsigned int Equal(unsigned char const* marks, int mark) noexcept {
#ifdef __SSE2__
    __m128i const all = _mm_loadu_si128(reinterpret_cast<__m128i const*>(marks));
    return static_cast<unsigned int>(_mm_movemask_epi8(_mm_cmpeq_epi8(all, _mm_set1_epi8(static_cast<char>(mark)))));
#else
    unsigned int bits = 0;
    for (int i = 0; i < size; ++i) bits |= static_cast<unsigned int>(marks[i] == mark) << i;
    return bits;
#endif
  }
};
