// Shaded faces of exact shapes on a page.
#pragma once

#include <string>
#include <vector>

struct BrivetWriteRequest;
struct ProductModel;

// Evaluates exact shapes for a page, according to Html.*.Writer.Shade:
//
//   Auto   shaded faces if a shape module is available, and the document has at most kFaces exact faces and kInstances
//          instances, which takes about ten seconds
//   On     shaded faces of any document; without a shape module there is a warning
//   Off    never starts the shape module
//
// The model gets meshes, and the volume, the area and the centroid of each product.
struct PageShading {
  static constexpr long kFaces = 5000;
  static constexpr long kInstances = 300000;

  std::vector<std::string> leftOut;  // a sentence for each reason for which faces are not shaded

  // Requires: `model` is that of the document, with geometry.
  static PageShading Evaluate(BrivetWriteRequest& request, ProductModel const& model);
};
