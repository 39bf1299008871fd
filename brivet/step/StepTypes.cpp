#include "StepTypes.h"

#include <cstring>
#include <tuple>

std::uint32_t StepTypes::Find(std::string_view name) {
  CacheEntry wanted;
  wanted.size = static_cast<std::uint32_t>(name.size());
  if (name.size() >= kPart) {
    std::memcpy(&wanted.first, name.data(), kPart);
    std::memcpy(&wanted.last, name.data() + name.size() - kPart, kPart);
  } else {
    std::memcpy(&wanted.first, name.data(), name.size());
  }
  CacheEntry& cached = cache[(wanted.first * 3 + wanted.last + wanted.size) * 0x9E3779B97F4A7C15U >> 54U];
  bool const isSame = cached.type != kNone && cached.first == wanted.first && cached.last == wanted.last &&
                      cached.size == wanted.size && (name.size() <= 2 * kPart || *types[cached.type].name == name);
  if (isSame) return cached.type;
  wanted.type = FindInTable(name);
  cached = wanted;
  return wanted.type;
}

// Adds the type if it is new.
std::uint32_t StepTypes::FindInTable(std::string_view name) {
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
