// Products, their shapes, and the assembly structure.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "StepModelContext.h"
#include "StepShapes.h"
#include "StepUnits.h"

// Reads products and occurrences with their placements, and the extents of shapes and assemblies.
class StepAssembly {
 public:
  StepAssembly(StepModelContext& modelContext, StepUnits& stepUnits, StepShapes& stepShapes)
      : context(modelContext), units(stepUnits), shapes(stepShapes) {}

  void Read();

  // Returns the index of a product definition, or -1.
  int ProductOf(std::uint32_t definition) const;
  // Returns the definition that a property definition, or a chain of them, finally belongs to: a product definition or
  // an occurrence; 0 if it is neither.
  std::uint32_t OwnerOf(std::uint32_t propertyDefinition) const;
  // Returns the index of an owner: the product, or the child of the occurrence; -1 if it is neither.
  int ProductOfOwner(std::uint32_t owner) const;
  // Returns the first product of each representation of a shape.
  std::unordered_map<std::uint32_t, int> ProductsByShape() const;

 private:
  void ReadProducts();
  void FindExcludedProducts();
  void ReadRepresentations();
  void ReadOccurrences();
  void ReadPlacements();
  bool ReadRelationship(std::uint32_t relationship, ModelOccurrence& occurrence);
  bool MapItems(std::uint32_t childItem, std::uint32_t parentItem, double factor, Placement& placement);
  void PlaceByMappedItems();
  void CutCycles();
  void FindRoots();
  void ReadShapes();
  std::vector<std::size_t> BottomUp() const;
  void ComputeExtents(std::vector<StepExtent>& extents);
  void ExtendByTree(int root, std::vector<StepExtent>& extents, ModelBox& box) const;
  double MetresOf(int product) const;
  bool Belongs(std::uint32_t representation, int product) const;
  bool IsItemOf(std::uint32_t item, std::uint32_t representation);

  StepModelContext& context;
  StepUnits& units;
  StepShapes& shapes;
  std::unordered_map<std::uint32_t, int> products;                                // by definition
  std::unordered_map<std::uint32_t, int> occurrenceOf;                            // by usage
  std::vector<std::vector<std::uint32_t>> representations;                        // by product
  std::vector<std::unordered_set<std::uint32_t>> representationSets;              // the same
  std::unordered_map<std::uint32_t, std::unordered_set<std::uint32_t>> itemSets;  // by representation
  std::vector<bool> isPlaced;                                                     // by occurrence
};
