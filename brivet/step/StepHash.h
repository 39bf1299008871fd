// Hash functions for keys that come from documents.
#pragma once

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <string_view>

// Returns a number that the author of a document cannot know, so that no document can contain keys that collide.
// Fuzzers use a fixed number, so that a run can be repeated.
inline std::uint64_t RandomSeed() {
#ifdef FUZZING_BUILD_MODE_UNSAFE_FOR_PRODUCTION
  return 0x9E3779B97F4A7C15U;
#else
  std::random_device source;
  return std::uint64_t(source()) << 32U | source();
#endif
}

// Spreads numbers that are close to each other over all bits: the finalizer of splitmix64 (Steele, Lea, Flood: Fast
// splittable pseudorandom number generators).
inline std::uint64_t MixBits(std::uint64_t number) {
  number = (number ^ (number >> 30U)) * 0xBF58476D1CE4E5B9U;
  number = (number ^ (number >> 27U)) * 0x94D049BB133111EBU;
  return number ^ (number >> 31U);
}

// Returns the hash of a string under a seed. Each block is multiplied by a number that depends on the seed, and the
// halves of the product are combined, so that no pair of strings collides for many seeds.
inline std::uint64_t HashString(std::string_view text, std::uint64_t seed) {
  __extension__ using Product = unsigned __int128;
  std::uint64_t const factor = MixBits(seed) | 1U;
  std::uint64_t hash = seed ^ text.size();
  while (!text.empty()) {
    std::uint64_t block = 0;
    std::size_t const count = text.size() < sizeof block ? text.size() : sizeof block;
    std::memcpy(&block, text.data(), count);
    Product const product = Product(hash ^ block) * factor;
    hash = static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
    text.remove_prefix(count);
  }
  return MixBits(hash);
}

// Hash function object for string keys in containers of the standard library. Not noexcept: the containers of libstdc++
// then store the hash with the key instead of computing it again.
class SeededStringHash {
 public:
  std::size_t operator()(std::string const& key) const { return HashString(key, seed); }

 private:
  std::uint64_t seed = RandomSeed();
};
