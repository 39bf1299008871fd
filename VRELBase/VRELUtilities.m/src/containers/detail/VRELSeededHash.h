// A hash whose collisions cannot be computed in advance.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "VRELExport.h"

// SipHash-1-3 (Aumasson and Bernstein, "SipHash: a fast short-input PRF", 2012) of a sequence of 16-bit units in
// little-endian order, under a random key of the process. Two sequences collide with probability 2^-64, also if an
// attacker chooses them.
//
//   VRELSeededHash hash;
//   for (char16_t unit : name) hash.Add(unit);
//   index.Add(slot, hash.Finish());
//
// The result is equal for equal sequences within one process and differs from process to process: neither store it nor
// derive an order from it.
class VRELSeededHash {
 public:
  struct Key {
    std::uint64_t low;
    std::uint64_t high;
  };

  // Begins with the key of the process.
  VRELSeededHash() noexcept : VRELSeededHash(ProcessKey()) {}
  explicit VRELSeededHash(Key const& key) noexcept
      : v0(key.low ^ 0x736F6D6570736575),
        v1(key.high ^ 0x646F72616E646F6D),
        v2(key.low ^ 0x6C7967656E657261),
        v3(key.high ^ 0x7465646279746573) {}

  // Returns the key, which is drawn at the first call.
  // Thread safety: safe.
  VREL_EXPORT static Key const& ProcessKey() noexcept;

  void Add(std::uint16_t unit) noexcept {
    word |= static_cast<std::uint64_t>(unit) << (count % 4 * 16);
    if (++count % 4 == 0) {
      Compress(word);
      word = 0;
    }
  }

  // Adds four units at once, the first one in the low bits.
  // Requires: the number of units before is a multiple of four.
  void AddFour(std::uint64_t units) noexcept {
    Compress(units);
    count += 4;
  }
  // Returns whether AddFour can be called.
  bool CanAddFour() const noexcept { return count % 4 == 0; }

  std::uint64_t Finish() noexcept {
    // The last word has at most three units, and the length in bytes, modulo 256, in its upper byte.
    Compress(word | static_cast<std::uint64_t>(count) << 57);
    v2 ^= 0xFF;
    for (int i = 0; i < 3; ++i) Round();
    return v0 ^ v1 ^ v2 ^ v3;
  }

  // Returns the hash of the units of a string. Bytes are widened without a sign.
  template <class Character>
  static std::uint64_t Of(std::basic_string_view<Character> text) noexcept {
    static_assert(sizeof(Character) <= sizeof(std::uint16_t));
    VRELSeededHash hash;
    for (Character const character : text) {
      std::uint16_t const mask = sizeof(Character) == 1 ? 0xFF : 0xFFFF;
      hash.Add(static_cast<std::uint16_t>(static_cast<std::uint16_t>(character) & mask));
    }
    return hash.Finish();
  }

 private:
  static std::uint64_t Rotated(std::uint64_t x, int bits) noexcept { return x << bits | x >> (64 - bits); }

  void Round() noexcept {
    v0 += v1;
    v1 = Rotated(v1, 13) ^ v0;
    v0 = Rotated(v0, 32);
    v2 += v3;
    v3 = Rotated(v3, 16) ^ v2;
    v0 += v3;
    v3 = Rotated(v3, 21) ^ v0;
    v2 += v1;
    v1 = Rotated(v1, 17) ^ v2;
    v2 = Rotated(v2, 32);
  }

  void Compress(std::uint64_t message) noexcept {
    v3 ^= message;
    Round();
    v0 ^= message;
  }

  std::uint64_t v0;
  std::uint64_t v1;
  std::uint64_t v2;
  std::uint64_t v3;
  std::uint64_t word = 0;
  std::uint32_t count = 0;
};
