#include "StepTypes.h"

#include <tuple>

std::uint32_t StepTypes::Count(std::string_view name) {
  key.assign(name.size() > NAME_LIMIT ? "(other types)" : name);
  auto place = numbers.find(key);
  if (place == numbers.end()) {
    if (types.size() >= LIMIT) key = "(other types)";
    bool isNew = false;
    std::tie(place, isNew) = numbers.emplace(key, static_cast<std::uint32_t>(types.size()));
    if (isNew) types.push_back({&place->first, 0});
  }
  ++types[place->second].instances;
  return place->second;
}
