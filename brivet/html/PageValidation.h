// Computed volumes, areas and centroids on a page, compared with the stored ones.
#pragma once

#include <cstddef>
#include <vector>

#include "PageSummary.h"
#include "ValidationChecks.h"

class VRELOptions;
struct ProductModel;

// Compares with the tolerance Html.*.Writer.Tolerance.
class PageValidation {
 public:
  // Both may be null. Ownership: the model is not owned.
  PageValidation(ProductModel const* productModel, VRELOptions* options);

  double Tolerance() const noexcept { return tolerance; }
  // Returns the comparison of a value of a property, or null.
  ValidationCheck const* Find(std::size_t property, std::size_t value) const;
  // Returns the computed properties of the root if there is one, and the number of stored values that agree or differ.
  std::vector<PageSummary::Row> SummaryRows() const;

 private:
  ProductModel const* model;
  double tolerance;
  std::vector<ValidationCheck> checks;  // ordered by property and value
  std::vector<ModelComputed> root;      // of the only root, if it was computed
};
