// Hash functions for keys that come from documents.
#pragma once

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <string_view>

// Returns a number that the author of a document cannot know, so that no document can contain keys that collide.
inline std::uint64_t RandomSeed() {
  std::random_device source;
  return std::uint64_t(source()) << 32U | source();
}

// Spreads numbers that are close to each other over all bits: the finalizer of splitmix64 (Steele, Lea, Flood: Fast
// splittable pseudorandom number generators).
inline std::uint64_t MixBits(std::uint64_t number) {
  number = (number ^ (number >> 30U)) * 0xBF58476D1CE4E5B9U;
  number = (number ^ (number >> 27U)) * 0x94D049BB133111EBU;
  return number ^ (number >> 31U);
}

// Returns the hash of a string under a seed.
inline std::uint64_t HashString(std::string_view text, std::uint64_t seed) {
  std::uint64_t hash = MixBits(seed ^ text.size());
  while (!text.empty()) {
    std::uint64_t block = 0;
    std::size_t const count = text.size() < sizeof block ? text.size() : sizeof block;
    std::memcpy(&block, text.data(), count);
    hash = MixBits(hash ^ block);
    text.remove_prefix(count);
  }
  return hash;
}

// Hash function object for string keys in containers of the standard library.
class SeededStringHash {
 public:
  std::size_t operator()(std::string const& key) const noexcept { return HashString(key, seed); }

 private:
  std::uint64_t seed = RandomSeed();
};
