// A binary glTF file is a chunk of JSON, whose length precedes it, and a chunk of numbers, which the JSON describes
// with their bounds. Therefore the meshes are traversed once to write the JSON to memory and once to write the numbers:
// first all positions, then all normals, then all indices, each in one buffer view.
#include "GlbWriter.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <utility>

#include "BrivetModule.h"
#include "Diagnostics.h"
#include "Gk_ErrMgr.h"
#include "ValidUtf8.h"

namespace {

using Json = rapidjson::Writer<rapidjson::StringBuffer>;

constexpr std::uint32_t kMagic = 0x46546C67;      // "glTF"
constexpr std::uint32_t kJsonChunk = 0x4E4F534A;  // "JSON"
constexpr std::uint32_t kDataChunk = 0x004E4942;  // "BIN"
constexpr std::uint64_t kSizeLimit = 0xFFFFFFFFU;
constexpr unsigned kHeaderSize = 12;
constexpr unsigned kChunkHeaderSize = 8;
constexpr unsigned kFloat = 5126;
constexpr unsigned kUnsignedInt = 5125;
constexpr unsigned kArrayBuffer = 34962;
constexpr unsigned kElementArrayBuffer = 34963;
constexpr unsigned kVectorSize = 12;  // bytes of three floats
constexpr unsigned kIndexSize = 4;
constexpr double kHalfRoot = 0.70710678118654752440;
constexpr double kGrey = 0.6;

// Meshes of a product with the same colour.
struct Primitive {
  int colour;
  bool hasNormals;
  std::vector<ModelMesh const*> meshes;
  std::uint64_t points = 0;
  std::uint64_t indices = 0;
};

struct Group {
  int product;
  double metres;
  std::vector<Primitive> primitives;
};

// glTF has linear components, files have those of a display (sRGB).
double Linear(double component) {
  double const value = std::min(std::max(component, 0.0), 1.0);
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

float Position(double coordinate, double metres) {
  return static_cast<float>(coordinate * metres);
}

// Makes the columns of the linear part orthogonal, since a node of glTF has a rotation and scales, but no shear.
// Returns whether they were.
bool Orthogonalize(Placement& placement) {
  std::array<double, 12> n = placement.Numbers();
  double columns[3][3];
  for (std::size_t c = 0; c < 3; ++c) {
    for (std::size_t r = 0; r < 3; ++r) columns[c][r] = n[4 * r + c];
  }
  auto const dot = [](double const* a, double const* b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; };
  bool isOrthogonal = true;
  bool isSingular = false;
  for (int c = 0; c < 3; ++c) {
    double const length = std::sqrt(dot(columns[c], columns[c]));
    for (int earlier = 0; earlier < c; ++earlier) {
      double const square = dot(columns[earlier], columns[earlier]);
      double const part = square > 0.0 ? dot(columns[c], columns[earlier]) / square : 0.0;
      if (std::abs(part) * std::sqrt(square) > 1e-6 * length) isOrthogonal = false;
      for (int i = 0; i < 3; ++i) columns[c][i] -= part * columns[earlier][i];
    }
    if (!(dot(columns[c], columns[c]) > 1e-12 * length * length) || !(length > 1e-12)) isSingular = true;
  }
  if (isOrthogonal && !isSingular) return true;
  for (std::size_t c = 0; c < 3; ++c) {
    for (std::size_t r = 0; r < 3; ++r) n[4 * r + c] = isSingular ? (c == r ? 1.0 : 0.0) : columns[c][r];
  }
  placement = Placement(n);
  return false;
}

class Glb {
 public:
  Glb(MeshScene const& meshScene, BrivetWriteRequest const& writeRequest, MeshOutput& meshOutput)
      : scene(meshScene), request(writeRequest), output(meshOutput), json(buffer) {}

  std::string Write() {
    MakeGroups();
    std::uint64_t const size = DataSize();
    if (size > kSizeLimit) return TooLarge();
    MakeJson();
    std::uint64_t const jsonSize = (buffer.GetSize() + 3) / 4 * 4;
    std::uint64_t const total = kHeaderSize + kChunkHeaderSize + jsonSize + kChunkHeaderSize + size;
    if (total > kSizeLimit) return TooLarge();
    output.PutUint32(kMagic);
    output.PutUint32(2);
    output.PutUint32(static_cast<std::uint32_t>(total));
    output.PutUint32(static_cast<std::uint32_t>(jsonSize));
    output.PutUint32(kJsonChunk);
    output.Put(std::string_view(buffer.GetString(), buffer.GetSize()));
    output.Put(std::string_view("   ", jsonSize - buffer.GetSize()));
    output.PutUint32(static_cast<std::uint32_t>(size));
    output.PutUint32(kDataChunk);
    WriteData();
    return "";
  }

 private:
  static std::string TooLarge() { return "the meshes are too large for binary glTF, which has at most 4 GiB"; }

  std::uint64_t DataSize() const { return kVectorSize * (points + normals) + kIndexSize * indices; }

  void Key(char const* name) { json.Key(name); }
  void PutText(char const* name, std::string const& text) {
    std::string const valid = ValidUtf8(text);
    Key(name);
    json.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
  }
  void PutNumber(char const* name, std::uint64_t number) {
    Key(name);
    json.Uint64(number);
  }
  void PutNumbers(char const* name, std::vector<double> const& numbers) {
    Key(name);
    json.StartArray();
    for (double const each : numbers) json.Double(each);
    json.EndArray();
  }
  void PutInstance(std::string const& instance) {
    if (instance.empty()) return;
    Key("extras");
    json.StartObject();
    PutText("instance", instance);
    json.EndObject();
  }

  void MakeGroups() {
    meshNumbers.assign(scene.Model().products.size(), -1);
    std::vector<char> isUsed(meshNumbers.size(), 0);
    scene.ForEachNode([&isUsed](MeshScene::Node const& node) { isUsed[static_cast<std::size_t>(node.product)] = 1; });
    for (std::size_t i = 0; i < meshNumbers.size(); ++i) {
      int const product = static_cast<int>(i);
      if (isUsed[i] == 0 || scene.MeshesOf(product).empty()) continue;
      meshNumbers[i] = static_cast<long>(groups.size());
      groups.push_back(MakeGroup(product));
    }
  }

  Group MakeGroup(int product) {
    Group group{product, scene.MetresOf(product), {}};
    std::map<std::pair<int, bool>, std::size_t> numbers;
    for (ModelMesh const* mesh : scene.MeshesOf(product)) {
      bool const hasNormals = !mesh->normals.empty();
      auto const [found, isNew] = numbers.try_emplace({mesh->colour, hasNormals}, group.primitives.size());
      if (isNew) group.primitives.push_back({mesh->colour, hasNormals, {}, 0, 0});
      Primitive& primitive = group.primitives[found->second];
      primitive.meshes.push_back(mesh);
      primitive.points += mesh->points.size() / 3;
      primitive.indices += mesh->triangles.size();
      points += mesh->points.size() / 3;
      normals += mesh->normals.size() / 3;
      indices += mesh->triangles.size();
    }
    for (Primitive const& each : group.primitives) {
      if (materials.try_emplace(each.colour, materialColours.size()).second) materialColours.push_back(each.colour);
    }
    return group;
  }

  void MakeJson() {
    json.StartObject();
    Key("asset");
    json.StartObject();
    PutText("version", "2.0");
    PutText("generator", "brivet");
    json.EndObject();
    PutNumber("scene", 0);
    Key("scenes");
    json.StartArray();
    json.StartObject();
    Key("nodes");
    json.StartArray();
    json.Uint(0);
    json.EndArray();
    json.EndObject();
    json.EndArray();
    PutNodes();
    PutMeshes();
    PutMaterials();
    PutAccessors();
    PutViews();
    json.EndObject();
  }

  void PutNodes() {
    std::vector<MeshScene::Node> nodes;
    scene.ForEachNode([&nodes](MeshScene::Node const& node) { nodes.push_back(node); });
    // The number of the first child and of the next sibling of each node; 0 is the node that contains the roots.
    std::vector<std::size_t> first(nodes.size() + 1, 0);
    std::vector<std::size_t> next(nodes.size() + 1, 0);
    for (std::size_t i = nodes.size(); i > 0; --i) {
      auto const parent = static_cast<std::size_t>(nodes[i - 1].parent + 1);
      next[i] = first[parent];
      first[parent] = i;
    }
    Key("nodes");
    json.StartArray();
    json.StartObject();
    PutText("name", request.title);
    PutNumbers("rotation", {-kHalfRoot, 0.0, 0.0, kHalfRoot});
    PutChildren(first[0], next);
    json.EndObject();
    for (std::size_t i = 1; i <= nodes.size(); ++i) PutNode(nodes[i - 1], first[i], next);
    json.EndArray();
  }

  void PutChildren(std::size_t first, std::vector<std::size_t> const& next) {
    if (first == 0) return;
    Key("children");
    json.StartArray();
    for (std::size_t child = first; child != 0; child = next[child]) json.Uint64(child);
    json.EndArray();
  }

  void PutNode(MeshScene::Node const& node, std::size_t firstChild, std::vector<std::size_t> const& next) {
    ProductModel const& model = scene.Model();
    json.StartObject();
    PutText("name", model.NodeName(node.product, node.occurrence));
    Placement placement = node.local;
    std::string const& instance = node.occurrence >= 0
                                      ? model.occurrences[static_cast<std::size_t>(node.occurrence)].instance
                                      : model.products[static_cast<std::size_t>(node.product)].definition;
    if (!Orthogonalize(placement)) {
      ReportWarning(request.shownName, instance + ": glTF has no shear; the placement is written without it");
    }
    if (!placement.IsIdentity()) {
      auto const& n = placement.Numbers();
      PutNumbers("matrix", {n[0], n[4], n[8], 0, n[1], n[5], n[9], 0, n[2], n[6], n[10], 0, n[3], n[7], n[11], 1});
    }
    long const mesh = meshNumbers[static_cast<std::size_t>(node.product)];
    if (mesh >= 0) PutNumber("mesh", static_cast<std::uint64_t>(mesh));
    PutChildren(firstChild, next);
    PutInstance(instance);
    json.EndObject();
  }

  // The accessors of a primitive are numbered in the order of PutAccessors.
  void PutMeshes() {
    std::uint64_t accessor = 0;
    Key("meshes");
    json.StartArray();
    for (Group const& group : groups) {
      ModelProduct const& product = scene.Model().products[static_cast<std::size_t>(group.product)];
      json.StartObject();
      PutText("name", product.DisplayName());
      Key("primitives");
      json.StartArray();
      for (Primitive const& each : group.primitives) {
        json.StartObject();
        Key("attributes");
        json.StartObject();
        PutNumber("POSITION", accessor++);
        if (each.hasNormals) PutNumber("NORMAL", accessor++);
        json.EndObject();
        PutNumber("indices", accessor++);
        PutNumber("material", materials[each.colour]);
        json.EndObject();
      }
      json.EndArray();
      PutInstance(product.definition);
      json.EndObject();
    }
    json.EndArray();
  }

  void PutMaterials() {
    Key("materials");
    json.StartArray();
    for (int const number : materialColours) {
      bool const isSet = number >= 0;
      ModelColour colour{kGrey, kGrey, kGrey, 0.0};
      if (isSet) colour = scene.Model().colours[static_cast<std::size_t>(number)].colour;
      double const alpha = 1.0 - std::min(std::max(colour.transparency, 0.0), 1.0);
      json.StartObject();
      PutText("name", isSet ? colour.Hexadecimal() : "default");
      Key("pbrMetallicRoughness");
      json.StartObject();
      PutNumbers("baseColorFactor", {Linear(colour.red), Linear(colour.green), Linear(colour.blue), alpha});
      PutNumber("metallicFactor", 0);
      PutReal("roughnessFactor", 0.6);
      json.EndObject();
      if (alpha < 1.0) PutText("alphaMode", "BLEND");
      Key("doubleSided");
      json.Bool(true);
      json.EndObject();
    }
    json.EndArray();
  }
  void PutReal(char const* name, double number) {
    Key(name);
    json.Double(number);
  }

  void PutAccessors() {
    unsigned const indexView = normals > 0 ? 2 : 1;
    std::uint64_t point = 0;
    std::uint64_t normal = 0;
    std::uint64_t index = 0;
    Key("accessors");
    json.StartArray();
    for (Group const& group : groups) {
      for (Primitive const& each : group.primitives) {
        Gk_ErrMgr::checkAbort();
        json.StartObject();
        PutAccessor(0, kVectorSize * point, kFloat, each.points, "VEC3");
        PutBounds(each, group.metres);
        json.EndObject();
        point += each.points;
        if (each.hasNormals) {
          json.StartObject();
          PutAccessor(1, kVectorSize * normal, kFloat, each.points, "VEC3");
          json.EndObject();
          normal += each.points;
        }
        json.StartObject();
        PutAccessor(indexView, kIndexSize * index, kUnsignedInt, each.indices, "SCALAR");
        json.EndObject();
        index += each.indices;
      }
    }
    json.EndArray();
  }

  void PutAccessor(unsigned view, std::uint64_t offset, unsigned component, std::uint64_t count, char const* type) {
    PutNumber("bufferView", view);
    if (offset > 0) PutNumber("byteOffset", offset);
    PutNumber("componentType", component);
    PutNumber("count", count);
    PutText("type", type);
  }

  void PutBounds(Primitive const& primitive, double metres) {
    std::vector<double> low(3, std::numeric_limits<double>::infinity());
    std::vector<double> high(3, -std::numeric_limits<double>::infinity());
    for (ModelMesh const* mesh : primitive.meshes) {
      for (std::size_t i = 0; i < mesh->points.size(); ++i) {
        double const coordinate = Position(mesh->points[i], metres);
        low[i % 3] = std::min(low[i % 3], coordinate);
        high[i % 3] = std::max(high[i % 3], coordinate);
      }
    }
    PutNumbers("min", low);
    PutNumbers("max", high);
  }

  void PutViews() {
    std::uint64_t offset = 0;
    auto const putView = [&](std::uint64_t size, unsigned target) {
      json.StartObject();
      PutNumber("buffer", 0);
      if (offset > 0) PutNumber("byteOffset", offset);
      PutNumber("byteLength", size);
      if (target == kArrayBuffer) PutNumber("byteStride", kVectorSize);
      PutNumber("target", target);
      json.EndObject();
      offset += size;
    };
    Key("bufferViews");
    json.StartArray();
    putView(kVectorSize * points, kArrayBuffer);
    if (normals > 0) putView(kVectorSize * normals, kArrayBuffer);
    putView(kIndexSize * indices, kElementArrayBuffer);
    json.EndArray();
    Key("buffers");
    json.StartArray();
    json.StartObject();
    PutNumber("byteLength", offset);
    json.EndObject();
    json.EndArray();
  }

  template <class Receive>
  void ForEachPrimitive(Receive const& receive) const {
    for (Group const& group : groups) {
      for (Primitive const& each : group.primitives) {
        Gk_ErrMgr::checkAbort();
        receive(group, each);
      }
    }
  }

  void WriteData() {
    ForEachPrimitive([this](Group const& group, Primitive const& each) {
      for (ModelMesh const* mesh : each.meshes) {
        for (double const coordinate : mesh->points) output.PutFloat(Position(coordinate, group.metres));
      }
    });
    ForEachPrimitive([this](Group const&, Primitive const& each) {
      for (ModelMesh const* mesh : each.meshes) WriteNormals(mesh->normals);
    });
    ForEachPrimitive([this](Group const&, Primitive const& each) {
      std::uint32_t first = 0;
      for (ModelMesh const* mesh : each.meshes) {
        for (std::uint32_t const corner : mesh->triangles) output.PutUint32(first + corner);
        first += static_cast<std::uint32_t>(mesh->points.size() / 3);
      }
    });
  }

  void WriteNormals(std::vector<double> const& given) {
    for (std::size_t i = 0; i + 3 <= given.size(); i += 3) {
      double const length = std::sqrt(given[i] * given[i] + given[i + 1] * given[i + 1] + given[i + 2] * given[i + 2]);
      for (std::size_t k = i; k < i + 3; ++k) output.PutFloat(static_cast<float>(given[k] / length));
    }
  }

  MeshScene const& scene;
  BrivetWriteRequest const& request;
  MeshOutput& output;
  rapidjson::StringBuffer buffer;
  Json json;
  std::vector<Group> groups;
  std::vector<long> meshNumbers;         // of each product; -1 for none
  std::map<int, std::size_t> materials;  // by colour
  std::vector<int> materialColours;
  std::uint64_t points = 0;
  std::uint64_t normals = 0;
  std::uint64_t indices = 0;
};

}  // namespace

std::string GlbWriter::WriteScene(MeshScene const& scene, BrivetWriteRequest const& request, MeshOutput& output) {
  return Glb(scene, request, output).Write();
}
