// Comparison of stored validation properties with computed ones.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "ProductModel.h"

// Volume, area and centroid of products with everything below them, from what a shape module computed for each.
//
//   ComputedTotals totals(model);
//   if (ModelComputed const* const all = totals.Of(model.roots[0])) ...
//
// Each product is added up once, however often it is used. Ownership: the model is not owned.
class ComputedTotals {
 public:
  explicit ComputedTotals(ProductModel const& productModel)
      : model(productModel), known(productModel.products.size()) {}

  // Returns the sums of a product in its unit; null if it has no shape, or if a shape below it was not computed. The
  // extent is the box around the boxes of the children.
  ModelComputed const* Of(int product);

 private:
  enum State { New, Entered, Absent, Incomplete, Present };
  struct Total {
    State state = New;
    ModelComputed computed;
  };

  void Add(std::size_t product);

  ProductModel const& model;
  std::vector<Total> known;
};

// A value of a geometric validation property and the computed one.
//
// The properties are those of the "Recommended Practices for Geometric and Assembly Validation Properties" of the CAx
// implementor forum: PROPERTY_DEFINITION 'geometric validation property' with the items 'volume measure', 'surface area
// measure' and 'centre point'. The practice leaves the allowed difference to the users, so that it is a parameter.
struct ValidationCheck {
  enum Quantity { Volume, Area, Centroid };
  enum Verdict { Agrees, Differs, OtherUnit };  // OtherUnit: the stored unit is not one of the quantity

  static constexpr double kTolerance = 0.001;  // by default

  std::size_t property = 0;  // index into ProductModel::properties
  std::size_t value = 0;     // index into its values
  int product = -1;          // index into ProductModel::products
  Quantity quantity = Volume;
  Verdict verdict = Agrees;
  double computed[3] = {0.0, 0.0, 0.0};  // of a centroid all three
  std::string unit;                      // of the computed value: that of the stored one, or else that of the product
  // Of a volume and an area the share of the stored value; of a centroid the distance as a share of the diagonal of the
  // extent.
  double difference = 0.0;

  // Returns the comparison for people: "differs by 0.5 %, more than 0.1 %".
  std::string Text(double tolerance) const;

  // Returns the comparisons of all stored values whose product was computed, in the order of the properties.
  static std::vector<ValidationCheck> Of(ProductModel const& model, ComputedTotals& totals, double tolerance);
};
