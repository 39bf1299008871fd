// Entity definitions that the product model needs, from StepEntities.def.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

enum class StepEntity : std::uint16_t {
#define STEP_ENTITY(identifier, name, supertype, attributes) identifier,
#include "StepEntities.def"
#undef STEP_ENTITY
};

struct StepEntityDefinition {
  std::string_view name;
  StepEntity supertype;
  char const* attributes;  // names separated by blanks
};

constexpr StepEntityDefinition kStepEntities[] = {
#define STEP_ENTITY(identifier, name, supertype, attributes) {name, StepEntity::supertype, attributes},
#include "StepEntities.def"
#undef STEP_ENTITY
};
constexpr std::size_t kStepEntityCount = sizeof kStepEntities / sizeof *kStepEntities;

constexpr StepEntityDefinition const& DefinitionOf(StepEntity entity) {
  return kStepEntities[static_cast<std::size_t>(entity)];
}

// Returns whether `entity` is `ancestor` or one of its subtypes.
constexpr bool IsA(StepEntity entity, StepEntity ancestor) {
  while (entity != ancestor && entity != StepEntity::None) entity = DefinitionOf(entity).supertype;
  return entity == ancestor;
}

// Answers IsA by one access: a bit for each pair, computed at compile time.
class StepEntityTable {
 public:
  constexpr StepEntityTable() {
    for (std::size_t i = 0; i < kStepEntityCount; ++i) {
      StepEntity each = static_cast<StepEntity>(i);
      while (true) {
        auto const ancestor = static_cast<std::size_t>(each);
        words[i][ancestor / 64] |= std::uint64_t(1) << ancestor % 64;
        if (each == StepEntity::None) break;
        each = DefinitionOf(each).supertype;
      }
    }
  }
  // Returns the same as IsA.
  constexpr bool IsA(StepEntity entity, StepEntity ancestor) const noexcept {
    auto const bit = static_cast<std::size_t>(ancestor);
    return (words[static_cast<std::size_t>(entity)][bit / 64] >> bit % 64 & 1U) != 0;
  }

 private:
  std::array<std::array<std::uint64_t, (kStepEntityCount + 63) / 64>, kStepEntityCount> words{};
};

// Returns the number of the entity's own attributes.
constexpr int OwnAttributeCount(StepEntity entity) {
  std::string_view const names = DefinitionOf(entity).attributes;
  int count = names.empty() ? 0 : 1;
  for (char const letter : names) count += letter == ' ' ? 1 : 0;
  return count;
}

// Returns the number of attributes that the entity inherits.
constexpr int InheritedAttributeCount(StepEntity entity) {
  int count = 0;
  while (entity != StepEntity::None) {
    entity = DefinitionOf(entity).supertype;
    count += OwnAttributeCount(entity);
  }
  return count;
}

// Attribute of an entity: its position in a record of that entity alone, and in an instance with internal mapping.
struct StepAttribute {
  StepEntity entity;
  int own;
  int position;
};

// Returns the attribute of this name.
// Requires: the entity itself declares it. An unknown name does not compile in a constant expression.
constexpr StepAttribute AttributeOf(StepEntity entity, std::string_view name) {
  std::string_view names = DefinitionOf(entity).attributes;
  for (int own = 0;; ++own) {
    std::size_t const end = names.find(' ');
    if (names.substr(0, end) == name) return {entity, own, InheritedAttributeCount(entity) + own};
    names = end == std::string_view::npos ? throw "no such attribute" : names.substr(end + 1);
  }
}

// A constant for an attribute: STEP_ATTRIBUTE(Product, "name").
#define STEP_ATTRIBUTE(entity, name)                                            \
  ([]() -> StepAttribute {                                                      \
    constexpr StepAttribute kAttribute = AttributeOf(StepEntity::entity, name); \
    return kAttribute;                                                          \
  }())

extern StepEntityTable const kStepEntityTable;

// Returns the entity of this name, or None.
StepEntity FindStepEntity(std::string_view name) noexcept;
