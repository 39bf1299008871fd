#include "ObjWriter.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "BrivetModule.h"
#include "ValidUtf8.h"

namespace {

// Returns a name in one line. Blanks separate groups of several names, so that they become underscores.
std::string Name(std::string const& text) {
  std::string name = ValidUtf8(text);
  for (char& byte : name) {
    if (static_cast<unsigned char>(byte) <= 0x20 || byte == 0x7F || byte == '\\' || byte == '#') byte = '_';
  }
  return name.empty() ? "unnamed" : name;
}

void PutLine(MeshOutput& output, char const* keyword, double const* numbers, int count, char const* end) {
  output.Put(keyword);
  for (int i = 0; i < count; ++i) {
    output.Put(" ");
    output.PutDecimal(numbers[i]);
  }
  output.Put(end);
}

// Transforms a normal by the cofactors of the linear part, which is the inverse transpose times the determinant.
void TransformNormal(Placement const& placement, double const* given, double* normal) {
  auto const& n = placement.Numbers();
  double square = 0.0;
  for (std::size_t row = 0; row < 3; ++row) {
    std::size_t const r1 = (row + 1) % 3;
    std::size_t const r2 = (row + 2) % 3;
    normal[row] = 0.0;
    for (std::size_t column = 0; column < 3; ++column) {
      std::size_t const c1 = (column + 1) % 3;
      std::size_t const c2 = (column + 2) % 3;
      double const cofactor = n[4 * r1 + c1] * n[4 * r2 + c2] - n[4 * r1 + c2] * n[4 * r2 + c1];
      normal[row] += cofactor * given[column];
    }
    square += normal[row] * normal[row];
  }
  double const length = placement.Determinant() < 0.0 ? -std::sqrt(square) : std::sqrt(square);
  for (int i = 0; i < 3; ++i) normal[i] = square > 0.0 ? normal[i] / length : given[i];
}

class Object {
 public:
  Object(MeshScene const& meshScene, MeshOutput& meshOutput) : scene(meshScene), output(meshOutput) {}

  void Write(MeshScene::Node const& node) {
    if (scene.MeshesOf(node.product).empty()) return;
    output.Put("o " + Name(scene.Model().NodeName(node.product, node.occurrence)) + "\n");
    bool const isMirrored = node.global.Determinant() < 0.0;
    for (ModelMesh const* mesh : scene.MeshesOf(node.product)) {
      PutPoints(node, *mesh);
      PutTriangles(*mesh, isMirrored);
      points += mesh->points.size() / 3;
      normals += mesh->normals.size() / 3;
    }
  }

 private:
  void PutPoints(MeshScene::Node const& node, ModelMesh const& mesh) {
    double line[6] = {};
    if (mesh.colour >= 0) {
      ModelColour const& colour = scene.Model().colours[static_cast<std::size_t>(mesh.colour)].colour;
      line[3] = colour.red;
      line[4] = colour.green;
      line[5] = colour.blue;
    }
    for (std::size_t i = 0; i + 3 <= mesh.points.size(); i += 3) {
      std::copy_n(&mesh.points[i], 3, line);
      node.global.Apply(line);
      PutLine(output, "v", line, mesh.colour >= 0 ? 6 : 3, "\n");
    }
    for (std::size_t i = 0; i + 3 <= mesh.normals.size(); i += 3) {
      double normal[3];
      TransformNormal(node.global, &mesh.normals[i], normal);
      PutLine(output, "vn", normal, 3, "\n");
    }
  }

  void PutTriangles(ModelMesh const& mesh, bool isMirrored) {
    for (std::size_t i = 0; i + 3 <= mesh.triangles.size(); i += 3) {
      output.Put("f");
      for (std::size_t k = 0; k < 3; ++k) {
        std::uint64_t const corner = mesh.triangles[i + (isMirrored ? 2 - k : k)];
        output.Put(" " + std::to_string(points + corner + 1));
        if (!mesh.normals.empty()) output.Put("//" + std::to_string(normals + corner + 1));
      }
      output.Put("\n");
    }
  }

  MeshScene const& scene;
  MeshOutput& output;
  std::uint64_t points = 0;
  std::uint64_t normals = 0;
};

}  // namespace

std::string ObjWriter::WriteScene(MeshScene const& scene, BrivetWriteRequest const& request, MeshOutput& output) {
  output.Put("# " + Name(request.title) + " by brivet\n");
  if (!scene.UnitName().empty()) output.Put("# unit: " + Name(scene.UnitName()) + "\n");
  Object object(scene, output);
  scene.ForEachNode([&object](MeshScene::Node const& node) { object.Write(node); });
  return "";
}
