// Layers, properties, annotations and views.
#pragma once

#include <cstdint>
#include <unordered_map>

#include "StepAssembly.h"
#include "StepModelContext.h"
#include "StepUnits.h"

class StepProperties {
 public:
  StepProperties(StepModelContext& modelContext, StepUnits& stepUnits, StepAssembly const& stepStructure)
      : context(modelContext), units(stepUnits), structure(stepStructure) {}

  void Read();

 private:
  void ReadLayers();
  void ReadProperties();
  void ReadValue(std::uint32_t item, int depth, ModelProperty& property);
  void ReadViews();
  void ReadAnnotations();
  void ReadGraphicAnnotations();
  void ReadSemanticAnnotations();
  std::string MeasureText(std::uint32_t measure);

  StepModelContext& context;
  StepUnits& units;
  StepAssembly const& structure;
  long valueCount = 0;
  std::unordered_map<std::uint32_t, std::string> viewOfItem;  // by annotation occurrence or callout
};
