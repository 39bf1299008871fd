// The entity types of a document.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// Numbers the types from 0 on as they first come, and counts their instances. Of types beyond LIMIT, and of those with
// a name of more than NAME_LIMIT bytes, which only a damaged file has, all are one: "(other types)".
class StepTypes {
 public:
  static constexpr std::size_t LIMIT = 20'000;
  static constexpr std::size_t NAME_LIMIT = 1'000;

  // Counts an instance of the type and gives the type's number.
  std::uint32_t Count(std::string_view name);

  std::size_t Size() const noexcept { return types.size(); }
  std::string const& Name(std::size_t type) const { return *types[type].name; }
  long Instances(std::size_t type) const { return types[type].instances; }

 private:
  struct Type {
    std::string const* name;  // the key
    long instances;
  };

  std::unordered_map<std::string, std::uint32_t> numbers;
  std::vector<Type> types;
  std::string key;  // kept between calls for its memory
};
