// Annotations and views.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "StepAssembly.h"
#include "StepModelContext.h"
#include "StepShapes.h"
#include "StepStyles.h"
#include "StepUnits.h"

// Reads ProductModel::annotations and ProductModel::views. The shapes must be read before, since annotations are in the
// coordinates of a product.
class StepAnnotations {
 public:
  StepAnnotations(StepModelContext& modelContext, StepUnits& stepUnits, StepStyles& stepStyles, StepShapes& stepShapes,
                  StepAssembly const& stepStructure)
      : context(modelContext), units(stepUnits), styles(stepStyles), shapes(stepShapes), structure(stepStructure) {}

  void Read();

 private:
  // Where the coordinates of a representation belong.
  struct Home {
    int product = -1;
    Placement placement;     // from the representation to the product, without the factor between units
    bool isCertain = false;  // found by a reference, not only by a shared context
  };

  void ReadViews();
  // Adds the names of views to all annotations of a representation, and of those that it maps.
  void AddView(std::uint32_t representation, std::string const& names);
  // Counts steps. Returns false, after a warning, if the document takes too many.
  bool Spend();

  void FindCallouts();
  void FindHomes();
  Home const& HomeOf(std::uint32_t representation);
  // Sets the product and the view of an annotation, and returns the placement of its items in the product.
  Placement Locate(std::uint32_t occurrence, std::uint32_t meaning, ModelAnnotation& annotation);
  void ReadGraphicAnnotation(std::uint32_t occurrence);
  // Returns the items with geometry below an annotation occurrence.
  std::vector<StepShapes::PlacedItem> LeavesOf(std::uint32_t occurrence, Placement const& placement,
                                               ModelAnnotation& annotation);
  void AddRectangle(std::uint32_t box, Placement const& placement, int colour, ModelAnnotation& annotation);
  // Reads the mapping of a mapped item, a symbol or a text. Returns the mapped representation, or 0.
  std::uint32_t ReadMapping(std::uint32_t item, Placement& placement);
  // Returns the strings of a text, joined with line feeds.
  std::string TextOf(std::uint32_t item);
  ModelAnnotation::Kind KindOf(std::uint32_t occurrence, std::uint32_t meaning) const;
  std::uint32_t OwnerOfMeaning(std::uint32_t meaning) const;

  void ReadSemanticAnnotations();
  std::string MeasureText(std::uint32_t measure);

  StepModelContext& context;
  StepUnits& units;
  StepStyles& styles;
  StepShapes& shapes;
  StepAssembly const& structure;
  long steps = 0;
  double radians = 1.0;                                        // of the annotation that is being read
  std::unordered_map<std::uint32_t, std::string> viewOfItem;   // by occurrence, callout or plane
  std::unordered_map<std::uint32_t, std::uint32_t> calloutOf;  // by occurrence
  std::unordered_map<std::uint32_t, std::uint32_t> planeOf;    // by occurrence or callout
  std::unordered_map<std::uint32_t, std::uint32_t> meaningOf;  // by occurrence or callout
  std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> representationsOf;  // the same, and planes
  std::unordered_map<std::uint32_t, Home> homes;                                    // by representation
  std::unordered_map<std::uint32_t, int> productOfContext;                          // -1 if several share it
};
