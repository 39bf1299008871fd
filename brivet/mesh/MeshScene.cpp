#include "MeshScene.h"

#include <cmath>
#include <utility>

#include "Gk_ErrMgr.h"

namespace {

constexpr double kSmallestFactor = 1e-12;
constexpr double kLargestFactor = 1e12;

bool IsUsable(double const* point) {
  return std::abs(point[0]) <= kLargestCoordinate && std::abs(point[1]) <= kLargestCoordinate &&
         std::abs(point[2]) <= kLargestCoordinate;
}

bool IsUsable(ModelMesh const& mesh, std::uint32_t const* triangle) {
  std::size_t const count = mesh.points.size() / 3;
  for (int i = 0; i < 3; ++i) {
    if (triangle[i] >= count || !IsUsable(&mesh.points[3 * std::size_t{triangle[i]}])) return false;
  }
  return triangle[0] != triangle[1] && triangle[1] != triangle[2] && triangle[2] != triangle[0];
}

// Returns whether there is a normal with a length for each point.
bool HasNormals(ModelMesh const& mesh) {
  if (mesh.normals.size() != mesh.points.size()) return false;
  for (std::size_t i = 0; i + 3 <= mesh.normals.size(); i += 3) {
    double const square = mesh.normals[i] * mesh.normals[i] + mesh.normals[i + 1] * mesh.normals[i + 1] +
                          mesh.normals[i + 2] * mesh.normals[i + 2];
    if (!(square > 1e-12 && square < 1e12)) return false;
  }
  return true;
}

bool IsClean(ModelMesh const& mesh) {
  if (mesh.triangles.size() % 3 != 0 || mesh.points.size() % 3 != 0) return false;
  if (!mesh.normals.empty() && !HasNormals(mesh)) return false;
  for (std::size_t i = 0; i + 3 <= mesh.triangles.size(); i += 3) {
    if (!IsUsable(mesh, &mesh.triangles[i])) return false;
  }
  for (std::size_t i = 0; i + 3 <= mesh.points.size(); i += 3) {
    if (!IsUsable(&mesh.points[i])) return false;
  }
  return true;
}

ModelMesh Clean(ModelMesh const& mesh, std::size_t& skipped) {
  constexpr std::uint32_t kUnused = 0xFFFFFFFFU;
  ModelMesh clean;
  clean.instance = mesh.instance;
  clean.colour = mesh.colour;
  std::vector<std::uint32_t> numbers(mesh.points.size() / 3, kUnused);
  bool const hasNormals = HasNormals(mesh);
  for (std::size_t i = 0; i + 3 <= mesh.triangles.size(); i += 3) {
    if (!IsUsable(mesh, &mesh.triangles[i])) {
      ++skipped;
      continue;
    }
    for (std::size_t k = i; k < i + 3; ++k) {
      std::uint32_t& number = numbers[mesh.triangles[k]];
      if (number == kUnused) {
        number = static_cast<std::uint32_t>(clean.points.size() / 3);
        auto const first = static_cast<std::ptrdiff_t>(3 * std::size_t{mesh.triangles[k]});
        clean.points.insert(clean.points.end(), mesh.points.begin() + first, mesh.points.begin() + first + 3);
        if (hasNormals) {
          clean.normals.insert(clean.normals.end(), mesh.normals.begin() + first, mesh.normals.begin() + first + 3);
        }
      }
      clean.triangles.push_back(number);
    }
  }
  return clean;
}

double FactorOf(ProductModel const& model, int units, double otherwise) {
  if (units < 0) return otherwise;
  double const factor = model.units[static_cast<std::size_t>(units)].metres;
  return factor >= kSmallestFactor && factor <= kLargestFactor ? factor : otherwise;
}

}  // namespace

MeshScene::MeshScene(ProductModel const& productModel) : model(productModel), meshes(model.products.size()) {
  double const rootMetres = FactorOf(model, model.extentUnits, 1.0);
  for (std::size_t i = 0; i < model.products.size(); ++i) {
    metres.push_back(FactorOf(model, model.products[i].units, rootMetres));
    for (ModelMesh const& mesh : model.products[i].meshes) AddMesh(meshes[i], mesh);
  }
  MarkAncestors();
}

void MeshScene::AddMesh(std::vector<ModelMesh const*>& list, ModelMesh const& mesh) {
  if (IsClean(mesh)) {
    if (!mesh.triangles.empty()) list.push_back(&mesh);
    return;
  }
  ModelMesh clean = Clean(mesh, skippedCount);
  if (clean.triangles.empty()) return;
  cleaned.push_back(std::move(clean));
  list.push_back(&cleaned.back());
}

void MeshScene::MarkAncestors() {
  std::vector<std::vector<int>> parents(meshes.size());
  for (ModelOccurrence const& each : model.occurrences) {
    if (each.parent >= 0 && each.child >= 0) parents[Index(each.child)].push_back(each.parent);
  }
  isShown.assign(meshes.size(), 0);
  std::vector<std::size_t> pending;
  auto const mark = [&](std::size_t product) {
    if (isShown[product] != 0) return;
    isShown[product] = 1;
    pending.push_back(product);
  };
  for (std::size_t i = 0; i < meshes.size(); ++i) {
    if (!meshes[i].empty()) mark(i);
  }
  while (!pending.empty()) {
    std::size_t const product = pending.back();
    pending.pop_back();
    for (int const parent : parents[product]) mark(Index(parent));
  }
}

std::string MeshScene::UnitName() const {
  return model.extentUnits < 0 ? "" : model.units[Index(model.extentUnits)].lengthName;
}

bool MeshScene::IsEmpty() const noexcept {
  for (int const root : model.roots) {
    if (isShown[Index(root)] != 0) return false;
  }
  return true;
}

bool MeshScene::HasTooManyNodes() const {
  long count = 0;
  for (int const root : model.roots) {
    if (isShown[Index(root)] != 0) count += model.CountNodes(root);
    if (count > ProductModel::kNodeLimit) return true;
  }
  return false;
}

// A placement P between products with the factors f to metres is f(parent) P / f(child) in metres.
void MeshScene::ForEachNode(std::function<void(Node const&)> const& receive) const {
  double const unit = model.roots.empty() ? 1.0 : metres[Index(model.roots[0])];
  long count = 0;
  std::vector<Node> pending;
  for (auto root = model.roots.rbegin(); root != model.roots.rend(); ++root) {
    if (isShown[Index(*root)] == 0) continue;
    pending.push_back({*root, -1, -1, Placement(), Placement::Scaling(metres[Index(*root)] / unit)});
  }
  while (!pending.empty()) {
    Gk_ErrMgr::checkAbort();
    Node const node = pending.back();
    pending.pop_back();
    long const number = count++;
    receive(node);
    auto const& children = model.products[Index(node.product)].occurrences;
    for (auto each = children.rbegin(); each != children.rend(); ++each) {
      ModelOccurrence const& occurrence = model.occurrences[Index(*each)];
      if (occurrence.child < 0 || isShown[Index(occurrence.child)] == 0) continue;
      Placement const placement = occurrence.placement.IsFinite() ? occurrence.placement : Placement();
      pending.push_back({occurrence.child, *each, number,
                         Placement::Scaling(metres[Index(node.product)]) * placement *
                             Placement::Scaling(1.0 / metres[Index(occurrence.child)]),
                         node.global * placement});
    }
  }
}
