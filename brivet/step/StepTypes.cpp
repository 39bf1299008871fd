#include "StepTypes.h"

#include <tuple>

// Adds the type if it is new, and puts it into the cache.
std::uint32_t StepTypes::FindInTable(std::string_view name, CacheEntry wanted) {
  key.assign(name.size() > kNameLimit ? "(other types)" : name);
  auto entry = numbers.find(key);
  if (entry == numbers.end()) {
    if (types.size() >= kLimit) key = "(other types)";
    bool isNew = false;
    std::tie(entry, isNew) = numbers.emplace(key, static_cast<std::uint32_t>(types.size()));
    if (isNew) types.push_back({&entry->first, 0});
  }
  wanted.type = entry->second;
  cache[wanted.Slot()] = wanted;
  return wanted.type;
}
