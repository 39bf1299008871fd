#include "StepTypes.h"

#include <cstring>
#include <tuple>

std::size_t StepTypes::CacheSlot(std::string_view name) noexcept {
  std::uint64_t first = 0;
  std::uint64_t last = 0;
  if (name.size() >= sizeof first) {
    std::memcpy(&first, name.data(), sizeof first);
    std::memcpy(&last, name.data() + name.size() - sizeof last, sizeof last);
  } else {
    std::memcpy(&first, name.data(), name.size());
  }
  return (first * 3 + last + name.size()) * 0x9E3779B97F4A7C15U >> 54U;
}

std::uint32_t StepTypes::Count(std::string_view name) {
  std::uint32_t& cached = cache[CacheSlot(name)];
  if (cached == kNone || *types[cached].name != name) cached = Find(name);
  ++types[cached].instances;
  return cached;
}

// Adds the type if it is new.
std::uint32_t StepTypes::Find(std::string_view name) {
  key.assign(name.size() > kNameLimit ? "(other types)" : name);
  auto entry = numbers.find(key);
  if (entry == numbers.end()) {
    if (types.size() >= kLimit) key = "(other types)";
    bool isNew = false;
    std::tie(entry, isNew) = numbers.emplace(key, static_cast<std::uint32_t>(types.size()));
    if (isNew) types.push_back({&entry->first, 0});
  }
  return entry->second;
}
