// The structure is expanded twice: to count the triangles, which binary STL has at the beginning, and to write them.
#include "StlWriter.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "BrivetModule.h"
#include "CheckedOutputStream.h"
#include "Diagnostics.h"
#include "Document.h"
#include "Gk_ErrMgr.h"
#include "ModuleOptions.h"
#include "ProductModel.h"
#include "RealText.h"

namespace {

// The normal and three corners, as in binary STL.
struct Facet {
  float numbers[12];
};

Facet FacetOf(double const (&corners)[3][3]) {
  double const* const a = corners[0];
  double const u[3] = {corners[1][0] - a[0], corners[1][1] - a[1], corners[1][2] - a[2]};
  double const v[3] = {corners[2][0] - a[0], corners[2][1] - a[1], corners[2][2] - a[2]};
  double const normal[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
  double const length = std::hypot(normal[0], normal[1], normal[2]);
  Facet facet;
  for (int i = 0; i < 3; ++i) {
    facet.numbers[i] = length > 0 ? static_cast<float>(normal[i] / length) : 0.0F;
    for (int corner = 0; corner < 3; ++corner) {
      facet.numbers[3 + 3 * corner + i] = static_cast<float>(corners[corner][i]);
    }
  }
  return facet;
}

// Calls action(corners) for each triangle of a placed mesh.
template <class Action>
void ForEachTriangle(ModelMesh const& mesh, Placement const& placement, Action const& action) {
  bool const isMirrored = placement.Determinant() < 0;
  for (std::size_t first = 0; first + 2 < mesh.triangles.size(); first += 3) {
    double corners[3][3];
    bool isValid = true;
    for (std::size_t i = 0; i < 3; ++i) {
      std::size_t const point = 3 * std::size_t{mesh.triangles[first + i]};
      isValid = isValid && point + 2 < mesh.points.size();
      if (!isValid) break;
      for (std::size_t k = 0; k < 3; ++k) corners[i][k] = mesh.points[point + k];
      placement.Apply(corners[i]);
    }
    if (!isValid) continue;
    if (isMirrored) std::swap(corners[1], corners[2]);
    action(corners);
  }
}

// Calls action(corners) for each triangle of a model, in millimetres.
template <class Action>
void ForEachTriangle(ProductModel const& model, Action const& action) {
  struct Node {
    int product;
    Placement placement;
  };
  std::vector<Node> pending;
  for (int const root : model.roots) {
    int const units = model.products[static_cast<std::size_t>(root)].units;
    double const metres = units >= 0 ? model.units[static_cast<std::size_t>(units)].metres : 0.001;
    pending.push_back({root, Placement::Scaling(1000 * metres)});
  }
  while (!pending.empty()) {
    Gk_ErrMgr::checkAbort();
    Node const node = pending.back();
    pending.pop_back();
    ModelProduct const& product = model.products[static_cast<std::size_t>(node.product)];
    for (ModelMesh const& mesh : product.meshes) ForEachTriangle(mesh, node.placement, action);
    for (int const index : product.occurrences) {
      ModelOccurrence const& occurrence = model.occurrences[static_cast<std::size_t>(index)];
      pending.push_back({occurrence.child, node.placement * occurrence.placement});
    }
  }
}

VRINResult Refuse(char const* reason) {
  ReportProblem(std::string("cannot write STL: the document has ") + reason);
  return VREL_E_NOT_SUPPORTED;
}

std::string TextOf(Facet const& facet) {
  auto const point = [&facet](int first) {
    std::string text;
    for (int i = first; i < first + 3; ++i) text += " " + FormatReal(facet.numbers[i]);
    return text;
  };
  return "facet normal" + point(0) + "\n outer loop\n  vertex" + point(3) + "\n  vertex" + point(6) + "\n  vertex" +
         point(9) + "\n endloop\nendfacet\n";
}

std::string BytesOf(Facet const& facet) {
  return std::string(reinterpret_cast<char const*>(facet.numbers), sizeof facet.numbers) + std::string(2, '\0');
}

void Write(CheckedOutputStream& stream, std::string const& text) {
  stream.write(text.data(), static_cast<int>(text.size()));
  stream.Check();
}

}  // namespace

VRINResult WriteStl(BrivetWriteRequest& request) {
  ProductModel const* const model = request.document->GetModel(true, *request.progress);
  if (request.document->GetModelResult().IsFailure()) return request.document->GetModelResult();
  if (model == nullptr) return Refuse("no product model");
  long nodes = 0;
  for (int const root : model->roots) nodes += model->CountNodes(root);
  if (nodes > ProductModel::kNodeLimit) return Refuse("too many components");
  std::uint64_t facets = 0;
  ForEachTriangle(*model, [&facets](auto const&) { ++facets; });
  if (facets == 0) return Refuse("no triangles");
  bool const isBinary = ModuleOptions(request.options, "Stl", ModuleOptions::Writer).GetBool("Binary", false);
  if (isBinary && facets > UINT32_MAX) return Refuse("more triangles than binary STL can count");

  CheckedOutputStream stream(request.stream);
  try {
    if (isBinary) {
      std::string header = "binary STL";
      header.resize(80, ' ');
      auto const count = static_cast<std::uint32_t>(facets);
      Write(stream, header.append(reinterpret_cast<char const*>(&count), sizeof count));
    } else {
      Write(stream, "solid " + request.title + "\n");
    }
    ForEachTriangle(*model, [&](auto const& corners) {
      Facet const facet = FacetOf(corners);
      Write(stream, isBinary ? BytesOf(facet) : TextOf(facet));
    });
    if (!isBinary) Write(stream, "endsolid " + request.title + "\n");
    return VREL_S_OK;
  } catch (CheckedOutputStream::Failure const&) {
    return VREL_E_FILE_SAVE;
  }
}
