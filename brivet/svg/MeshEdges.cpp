#include "MeshEdges.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>

#include "ProductModel.h"

namespace {

constexpr double kSharpCosine = 0.8660254037844386;  // of 30 degrees

using Vector = std::array<double, 3>;

struct Neighbours {
  Vector normal{};  // of the first triangle
  int triangles = 0;
  bool isSharp = false;
};

Vector NormalOf(Vector const& a, Vector const& b, Vector const& c) {
  Vector const u = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
  Vector const v = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
  Vector normal = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
  double const length = std::sqrt(normal[0] * normal[0] + normal[1] * normal[1] + normal[2] * normal[2]);
  if (length > 0.0) {
    for (double& each : normal) each /= length;
  }
  return normal;
}

}  // namespace

std::vector<double> SharpEdges(ModelMesh const& mesh) {
  std::size_t const count = mesh.points.size() / 3;
  std::vector<Vector> points;
  std::vector<std::uint32_t> positions(count);  // indices into points
  std::map<Vector, std::uint32_t> known;
  for (std::size_t i = 0; i < count; ++i) {
    Vector const point = {mesh.points[3 * i], mesh.points[3 * i + 1], mesh.points[3 * i + 2]};
    // NaN has no order.
    bool const isFinite = std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]);
    auto const next = static_cast<std::uint32_t>(points.size());
    positions[i] = isFinite ? known.try_emplace(point, next).first->second : next;
    if (positions[i] == next) points.push_back(point);
  }

  std::map<std::pair<std::uint32_t, std::uint32_t>, Neighbours> edges;
  for (std::size_t i = 0; i + 2 < mesh.triangles.size(); i += 3) {
    if (mesh.triangles[i] >= count || mesh.triangles[i + 1] >= count || mesh.triangles[i + 2] >= count) continue;
    std::uint32_t const corners[3] = {positions[mesh.triangles[i]], positions[mesh.triangles[i + 1]],
                                      positions[mesh.triangles[i + 2]]};
    if (corners[0] == corners[1] || corners[1] == corners[2] || corners[2] == corners[0]) continue;
    Vector const normal = NormalOf(points[corners[0]], points[corners[1]], points[corners[2]]);
    for (int side = 0; side < 3; ++side) {
      std::uint32_t const a = corners[side];
      std::uint32_t const b = corners[(side + 1) % 3];
      Neighbours& edge = edges[a < b ? std::make_pair(a, b) : std::make_pair(b, a)];
      if (edge.triangles++ == 0) {
        edge.normal = normal;
        continue;
      }
      double const cosine = normal[0] * edge.normal[0] + normal[1] * edge.normal[1] + normal[2] * edge.normal[2];
      // Triangles of opposite orientation meet smoothly too.
      if (std::abs(cosine) < kSharpCosine) edge.isSharp = true;
    }
  }

  std::vector<double> segments;
  for (auto const& [ends, edge] : edges) {
    if (edge.triangles == 2 && !edge.isSharp) continue;
    segments.insert(segments.end(), points[ends.first].begin(), points[ends.first].end());
    segments.insert(segments.end(), points[ends.second].begin(), points[ends.second].end());
  }
  return segments;
}
