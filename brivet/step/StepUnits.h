// Units of representation contexts and of measures.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

#include "StepHash.h"
#include "StepModelContext.h"

// Unit as a name and a factor to the SI unit of its kind.
struct StepUnit {
  std::string name;
  double factor = 1.0;
  bool isValid = false;
};

class StepUnits {
 public:
  explicit StepUnits(StepModelContext& modelContext) : context(modelContext) {}

  // Returns the index of a context's units in the model, adding them at first use; -1 without units of length.
  int OfContext(std::uint32_t representationContext);
  // Returns the context of a representation, or 0.
  std::uint32_t ContextOf(std::uint32_t representation);
  // Returns the factor of a context's length unit to metres; 1 without units.
  double Metres(std::uint32_t representationContext);
  // Returns the factor of a context's plane angle unit to radians; 1 without units.
  double Radians(std::uint32_t representationContext);
  // Factors of a context's units to metres and radians; 0 metres without a unit of length.
  struct Factors {
    double metres = 0.0;
    double radians = 1.0;
  };
  // Returns the factors of a context without adding it to the model, which lists contexts of shapes only.
  Factors FactorsOf(std::uint32_t representationContext);
  // Returns a unit of any kind: named, conversion-based or derived.
  StepUnit Read(std::uint32_t unit);

 private:
  StepUnit Read(std::uint32_t unit, int depth);
  StepUnit Compute(std::uint32_t unit, int depth);
  std::optional<ModelUnits> ReadContext(std::uint32_t representationContext);

  StepModelContext& context;
  std::unordered_map<std::uint32_t, std::uint32_t> contexts;                    // by representation
  std::unordered_map<std::uint32_t, int> known;                                 // by context
  std::unordered_map<std::uint32_t, Factors> factors;                           // by context
  std::unordered_map<std::uint32_t, StepUnit> unitsRead;                        // by unit
  std::unordered_map<std::string, std::size_t, SeededStringHash> indexOfUnits;  // by their text
};
