// Layers and properties.
#pragma once

#include <cstdint>
#include <optional>

#include "StepAssembly.h"
#include "StepModelContext.h"
#include "StepUnits.h"

// Reads ProductModel::layers and ProductModel::properties.
class StepProperties {
 public:
  StepProperties(StepModelContext& modelContext, StepUnits& stepUnits, StepAssembly const& stepStructure)
      : context(modelContext), units(stepUnits), structure(stepStructure) {}

  void Read();

 private:
  void ReadLayers();
  void ReadProperties();
  void ReadValue(std::uint32_t item, int depth, ModelProperty& property);

  StepModelContext& context;
  StepUnits& units;
  StepAssembly const& structure;
  std::optional<double> metresOfPoints;  // of the present representation
  long valueCount = 0;
};
