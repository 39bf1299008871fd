#include "StepTypes.h"

#include <tuple>

std::uint32_t StepTypes::Count(std::string_view name) {
  key.assign(name.size() > kNameLimit ? "(other types)" : name);
  auto entry = numbers.find(key);
  if (entry == numbers.end()) {
    if (types.size() >= kLimit) key = "(other types)";
    bool isNew = false;
    std::tie(entry, isNew) = numbers.emplace(key, static_cast<std::uint32_t>(types.size()));
    if (isNew) types.push_back({&entry->first, 0});
  }
  ++types[entry->second].instances;
  return entry->second;
}
