#include "BinaryStlWriter.h"

#include <cstdint>
#include <utility>

namespace {

constexpr std::size_t kHeaderSize = 80;
constexpr std::uint64_t kTriangleLimit = 0xFFFFFFFFU;

std::string Header(std::string const& unit) {
  // A header that begins with "solid" would be taken for ASCII STL.
  std::string header = "binary STL by brivet";
  if (!unit.empty()) header += ", unit " + unit;
  header.resize(kHeaderSize, ' ');
  return header;
}

}  // namespace

std::string BinaryStlWriter::WriteScene(MeshScene const& scene, BrivetWriteRequest const& /*request*/,
                                        MeshOutput& output) {
  std::vector<std::uint64_t> counts;
  for (std::size_t i = 0; i < scene.Model().products.size(); ++i) {
    std::uint64_t count = 0;
    for (ModelMesh const* mesh : scene.MeshesOf(static_cast<int>(i))) count += mesh->triangles.size() / 3;
    counts.push_back(count);
  }
  std::uint64_t total = 0;
  scene.ForEachNode([&](MeshScene::Node const& node) { total += counts[static_cast<std::size_t>(node.product)]; });
  if (total > kTriangleLimit) return "STL has at most 4,294,967,295 triangles, these are " + std::to_string(total);

  output.Put(Header(scene.UnitName()));
  output.PutUint32(static_cast<std::uint32_t>(total));
  scene.ForEachNode([&](MeshScene::Node const& node) {
    bool const isMirrored = node.global.Determinant() < 0.0;
    for (ModelMesh const* mesh : scene.MeshesOf(node.product)) {
      for (std::size_t i = 0; i + 3 <= mesh->triangles.size(); i += 3) {
        double corners[3][3];
        for (std::size_t k = 0; k < 3; ++k) {
          std::size_t const corner = mesh->triangles[i + (isMirrored ? 2 - k : k)];
          for (std::size_t axis = 0; axis < 3; ++axis) corners[k][axis] = mesh->points[3 * corner + axis];
          node.global.Apply(corners[k]);
        }
        double normal[3];
        ComputeNormal(corners, normal);
        for (double const each : normal) output.PutFloat(static_cast<float>(each));
        for (auto const& corner : corners) {
          for (double const each : corner) output.PutFloat(static_cast<float>(each));
        }
        output.PutUint16(0);
      }
    }
  });
  return "";
}
