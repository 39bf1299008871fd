// Entity types of a document.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "StepHash.h"

// Numbers the types from 0 in the order of their first instances, and counts the instances. All types beyond kLimit,
// and those with a name of more than kNameLimit bytes, which only a damaged file has, are one type: "(other types)".
// The hash function is seeded, so that no document can choose names that collide. A small cache by length and first and
// last bytes precedes the hash table, because a document has few types and many instances.
class StepTypes {
 public:
  static constexpr std::size_t kLimit = 20'000;
  static constexpr std::size_t kNameLimit = 1'000;

  // Returns the number of the type, which is added, without instances, if it is new.
  std::uint32_t Find(std::string_view name) {
    CacheEntry wanted;
    wanted.size = static_cast<std::uint32_t>(name.size());
    if (name.size() >= kPart) {
      std::memcpy(&wanted.first, name.data(), kPart);
      std::memcpy(&wanted.last, name.data() + name.size() - kPart, kPart);
    } else {
      std::memcpy(&wanted.first, name.data(), name.size());
    }
    CacheEntry const& cached = cache[wanted.Slot()];
    bool const isSame = cached.type != kNone && cached.first == wanted.first && cached.last == wanted.last &&
                        cached.size == wanted.size && (name.size() <= 2 * kPart || *types[cached.type].name == name);
    return isSame ? cached.type : FindInTable(name, wanted);
  }
  // Counts an instance of a type.
  void Count(std::uint32_t type) { ++types[type].instances; }
  // Counts an instance of the type and returns the type's number.
  std::uint32_t Count(std::string_view name) {
    std::uint32_t const type = Find(name);
    Count(type);
    return type;
  }

  // Takes back one Count.
  void Remove(std::uint32_t type) { --types[type].instances; }

  std::size_t Size() const noexcept { return types.size(); }
  std::string const& Name(std::size_t type) const { return *types[type].name; }
  long Instances(std::size_t type) const { return types[type].instances; }

 private:
  static constexpr std::uint32_t kNone = UINT32_MAX;
  static constexpr std::size_t kCacheSize = 1024;

  // Names of at most twice kPart bytes are equal if their keys are.
  static constexpr std::size_t kPart = sizeof(std::uint64_t);
  struct CacheEntry {
    std::uint64_t first = 0;  // bytes of the name
    std::uint64_t last = 0;
    std::uint32_t size = 0;
    std::uint32_t type = kNone;

    std::size_t Slot() const noexcept { return (first * 3 + last + size) * 0x9E3779B97F4A7C15U >> 54U; }
  };

  std::uint32_t FindInTable(std::string_view name, CacheEntry wanted);

  struct Type {
    std::string const* name;  // the key
    long instances;
  };

  std::unordered_map<std::string, std::uint32_t, SeededStringHash> numbers;
  std::vector<Type> types;
  std::vector<CacheEntry> cache = std::vector<CacheEntry>(kCacheSize);
  std::string key;  // a member so that its memory is reused
};
