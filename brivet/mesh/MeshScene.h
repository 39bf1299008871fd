// Meshes of a product model with the nodes of its structure, ready for writing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "Placement.h"
#include "ProductModel.h"

// The meshes of each product, and the nodes of the structure that have meshes or have descendants with meshes.
//
// Triangles with invalid indices, with two equal indices, or with coordinates that are not finite or beyond
// kLargestCoordinate are left out, as are points that no other triangle uses. Normals are kept only if all of them have
// a length.
//
//   MeshScene const scene(model);
//   scene.ForEachNode([&](MeshScene::Node const& node) { for (ModelMesh const* mesh : scene.MeshesOf(node.product)) ...
//   });
//
// Ownership: the model must outlive the scene.
class MeshScene {
 public:
  struct Node {
    int product;
    int occurrence;    // -1 for a root
    long parent;       // number of the parent, in the order of ForEachNode; -1 for a root
    Placement local;   // in its parent, both in metres
    Placement global;  // from the product's unit to that of the first root
  };

  explicit MeshScene(ProductModel const& productModel);

  // Returns the meshes of the product itself that have triangles.
  std::vector<ModelMesh const*> const& MeshesOf(int product) const { return meshes[Index(product)]; }
  // Returns the factor of the product's length unit to metres; that of the first root if it has no unit.
  double MetresOf(int product) const { return metres[Index(product)]; }
  // Returns the name of the length unit of the first root; empty if it is unknown.
  std::string UnitName() const;
  // Returns whether no node has a triangle.
  bool IsEmpty() const noexcept;
  // Returns whether the structure has more nodes than ProductModel::kNodeLimit.
  bool HasTooManyNodes() const;
  // Returns the number of triangles that were left out.
  std::size_t SkippedCount() const noexcept { return skippedCount; }

  // Calls the function for each node, parents first. Polls for an abort.
  void ForEachNode(std::function<void(Node const&)> const& receive) const;

  ProductModel const& Model() const noexcept { return model; }

 private:
  static std::size_t Index(int number) { return static_cast<std::size_t>(number); }
  void AddMesh(std::vector<ModelMesh const*>& list, ModelMesh const& mesh);
  void MarkAncestors();

  ProductModel const& model;
  std::vector<std::vector<ModelMesh const*>> meshes;  // of each product
  std::deque<ModelMesh> cleaned;                      // those that differ from the model's
  std::vector<double> metres;
  std::vector<char> isShown;  // the product or a descendant has meshes
  std::size_t skippedCount = 0;
};
