#include "PageShading.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>

#include "BrivetModule.h"
#include "Diagnostics.h"
#include "Document.h"
#include "ModuleOptions.h"
#include "ProductModel.h"
#include "ShapeEvaluator.h"

namespace {

enum class Mode { Auto, On, Off };

// The option store reads On and Off as values of type bool, which have no string.
Mode ModeOf(VRELOptions* store) {
  ModuleOptions const options(store, "Html", ModuleOptions::Writer);
  bool const value = options.GetBool("Shade", false);
  bool const isSet = value == options.GetBool("Shade", true);
  if (!isSet) return Mode::Auto;
  return value ? Mode::On : Mode::Off;
}

// Returns whether a product has exact faces, which it shows if they are meshed. Tessellated shapes have meshes already.
bool IsExact(ModelProduct const& product) {
  return !product.visibleFaces.empty() && product.meshes.empty();
}

// Returns the number of faces that have no mesh. The meshes of faces that the engine does not identify have the
// instances of items; each counts for one of them.
std::size_t MissingFaces(ModelProduct const& product) {
  std::unordered_set<std::string> missing;
  for (ModelFace const& face : product.visibleFaces) missing.insert(face.instance);
  std::unordered_set<std::string> const all = missing;
  std::size_t unidentified = 0;
  for (ModelMesh const& mesh : product.meshes) {
    missing.erase(mesh.instance);
    if (all.count(mesh.instance) == 0) ++unidentified;
  }
  return missing.size() - std::min(missing.size(), unidentified);
}

std::string Counted(std::size_t number, std::string const& thing) {
  return std::to_string(number) + " " + thing + (number == 1 ? "" : "s");
}

}  // namespace

PageShading PageShading::Evaluate(BrivetWriteRequest& request, ProductModel const& model) {
  PageShading shading;
  Mode const mode = ModeOf(request.options);
  std::vector<std::size_t> exact;
  std::size_t faces = 0;
  for (std::size_t i = 0; i < model.products.size(); ++i) {
    if (!IsExact(model.products[i])) continue;
    exact.push_back(i);
    faces += model.products[i].visibleFaces.size();
  }
  if (exact.empty() || mode == Mode::Off) return shading;
  bool const isAlways = mode == Mode::On;
  if (request.shapes == nullptr || !request.shapes->IsAvailable()) {
    if (isAlways) {
      ReportWarning(request.shownName,
                    "faces are not shaded: install the package brivet-shape, which meshes exact shapes");
      shading.leftOut.push_back("Faces are not shaded: no module evaluates exact shapes.");
    }
    return shading;
  }
  bool const hasManyFaces = faces > static_cast<std::size_t>(kFaces);
  if (!isAlways && (hasManyFaces || request.document->GetInstanceCount() > kInstances)) {
    shading.leftOut.push_back(
        "Faces are not shaded, because the document has more than " +
        (hasManyFaces ? std::to_string(kFaces) + " faces" : std::to_string(kInstances) + " instances") +
        ". The option Html.*.Writer.Shade=On shades them.");
    return shading;
  }
  GetEvaluatedModel(request, ShapeEvaluator::Meshes | ShapeEvaluator::Properties);
  std::string const reason =
      model.evaluationFailure.empty() ? "the engine does not evaluate them" : model.evaluationFailure;
  std::size_t products = 0;
  std::size_t missing = 0;
  for (std::size_t const index : exact) {
    ModelProduct const& product = model.products[index];
    if (product.meshes.empty()) {
      ++products;
    } else {
      missing += MissingFaces(product);
    }
  }
  if (products > 0) {
    shading.leftOut.push_back("The faces of " + Counted(products, "product") + " are not shaded: " + reason + ".");
  }
  if (missing > 0) {
    shading.leftOut.push_back(Counted(missing, "face") + (missing == 1 ? " is" : " are") +
                              " not shaded: the engine does not evaluate " + (missing == 1 ? "it." : "them."));
  }
  return shading;
}
