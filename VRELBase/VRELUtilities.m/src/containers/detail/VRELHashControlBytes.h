// Control bytes: short hashes of the keys, by which a search skips keys that cannot be equal without reading them.
#pragma once

#include <type_traits>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "VRELHashTraits.h"

// Control bytes of the keys of a hash table: 0 for a vacant slot, else a hash of seven or eight bits of the key.
//
// A key type provides control bytes by an operation of its VRELHashTraits:
//
//   static unsigned char Mark(K const& key);
//
// Keys with different control bytes are never equal by VRELHashTraits<K>::Equal, except that kAny is the control byte
// of a key of which nothing is known. No key has the control byte kVacant. Without that operation every key has kAny.
template <class K, class = void>
class VRELHashControlBytes {
 public:
  static constexpr bool kExist = false;
  static constexpr unsigned char kVacant = 0;
  static constexpr unsigned char kAny = 1;

  static unsigned char Of(K const&) noexcept { return kAny; }
};

template <class K>
class VRELHashControlBytes<K, std::void_t<decltype(&VRELHashTraits<K>::Mark)>> {
 public:
  static constexpr bool kExist = true;
  static constexpr unsigned char kVacant = 0;
  static constexpr unsigned char kAny = 1;

  static unsigned char Of(K const& key) { return VRELHashTraits<K>::Mark(key); }
};

// Sixteen consecutive slots, compared at once: a bit for each, the lowest for the first slot.
struct VRELHashGroup {
  static constexpr int kSize = 16;

  // Compares the control bytes at `bytes` with the one of a key. It is an int so that it is not widened in each group.
  VRELHashGroup(unsigned char const* bytes, int controlByte) noexcept {
    vacant = Equal(bytes, 0);
    unsigned int const equal = controlByte == 1 ? ~vacant : Equal(bytes, controlByte) | Equal(bytes, 1);
    candidates = equal & (vacant - 1) & 0xFFFF;
  }

  unsigned int vacant;      // vacant slots
  unsigned int candidates;  // slots before the first vacant one whose keys may be equal

 private:
  static unsigned int Equal(unsigned char const* bytes, int value) noexcept {
#ifdef __SSE2__
    __m128i const all = _mm_loadu_si128(reinterpret_cast<__m128i const*>(bytes));
    return static_cast<unsigned int>(_mm_movemask_epi8(_mm_cmpeq_epi8(all, _mm_set1_epi8(static_cast<char>(value)))));
#else
    unsigned int bits = 0;
    for (int i = 0; i < kSize; ++i) bits |= static_cast<unsigned int>(bytes[i] == value) << i;
    return bits;
#endif
  }
};
