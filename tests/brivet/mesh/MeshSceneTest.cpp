#include "MeshScene.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "MeshFixture.h"

TEST(MeshSceneTest, LeavesOutInvalidTriangles) {
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
  ProductModel model = PlateModel();
  model.products[0].meshes = {
      Mesh({0, 0, 0, 1, 0, 0, 0, 1, 0, kInfinite, 0, 0, 0, kNotANumber, 0, 0, 0, 2e15, 5, 5, 5},
           {0, 1, 2, 0, 1, 3, 0, 4, 2, 5, 1, 2, 0, 0, 1, 0, 1, 7, 0, 1, 0xFFFFFFFFU, 2, 1, 6, 1, 2})};
  MeshScene const scene(model);
  ASSERT_EQ(scene.MeshesOf(0).size(), 1U);
  EXPECT_EQ(scene.MeshesOf(0)[0]->points, (std::vector<double>{0, 0, 0, 1, 0, 0, 0, 1, 0, 5, 5, 5}));
  EXPECT_EQ(scene.MeshesOf(0)[0]->triangles, (std::vector<std::uint32_t>{0, 1, 2, 2, 1, 3}));
  EXPECT_EQ(scene.SkippedCount(), 6U);
}

TEST(MeshSceneTest, DropsNormalsWithoutLength) {
  ProductModel model = PlateModel();
  for (std::vector<double> const& normals :
       {std::vector<double>{0, 0, 1, 0, 0, 0, 0, 0, 1}, std::vector<double>{0, 0, 1},
        std::vector<double>{0, 0, 1, 0, 0, 1, 0, 0, std::numeric_limits<double>::quiet_NaN()}}) {
    model.products[0].meshes[0].normals = normals;
    MeshScene const scene(model);
    ASSERT_EQ(scene.MeshesOf(0).size(), 1U);
    EXPECT_TRUE(scene.MeshesOf(0)[0]->normals.empty());
    EXPECT_EQ(scene.MeshesOf(0)[0]->triangles.size(), 3U);
  }
  model.products[0].meshes[0].normals = {0, 0, 1, 0, 0, 1, 0, 0, 1};
  EXPECT_EQ(MeshScene(model).MeshesOf(0)[0]->normals.size(), 9U);
}

TEST(MeshSceneTest, IsEmptyWithoutTriangles) {
  EXPECT_TRUE(MeshScene(ProductModel()).IsEmpty());
  ProductModel model = AssemblyModel();
  EXPECT_FALSE(MeshScene(model).IsEmpty());
  model.products[0].meshes[0].triangles = {0, 1, 1};
  EXPECT_TRUE(MeshScene(model).IsEmpty());
  model.products[0].meshes.clear();
  EXPECT_TRUE(MeshScene(model).IsEmpty());
}

TEST(MeshSceneTest, OmitsNodesWithoutMeshes) {
  ProductModel model = AssemblyModel();
  model.products.emplace_back();  // without shape
  ModelOccurrence none;
  none.parent = 1;
  none.child = 2;
  model.occurrences.push_back(none);
  model.products[1].occurrences = {2, 0, 2, 1};
  model.roots = {2, 1};
  std::vector<long> parents;
  std::vector<int> occurrences;
  MeshScene(model).ForEachNode([&](MeshScene::Node const& node) {
    parents.push_back(node.parent);
    occurrences.push_back(node.occurrence);
  });
  EXPECT_EQ(parents, (std::vector<long>{-1, 0, 0}));
  EXPECT_EQ(occurrences, (std::vector<int>{-1, 0, 1}));
}

// 2 to the power of 30 nodes.
TEST(MeshSceneTest, FindsTooManyNodes) {
  ProductModel model = PlateModel();
  for (int i = 1; i <= 30; ++i) {
    ModelProduct parent;
    for (int k = 0; k < 2; ++k) {
      ModelOccurrence use;
      use.parent = i;
      use.child = i - 1;
      parent.occurrences.push_back(static_cast<int>(model.occurrences.size()));
      model.occurrences.push_back(use);
    }
    model.products.push_back(parent);
  }
  model.roots = {0};
  EXPECT_FALSE(MeshScene(model).HasTooManyNodes());
  model.roots = {30};
  EXPECT_TRUE(MeshScene(model).HasTooManyNodes());
}

TEST(MeshSceneTest, IgnoresUselessUnits) {
  ProductModel model = PlateModel();
  for (double const factor : {0.0, -1.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
    model.units[0].metres = factor;
    EXPECT_EQ(MeshScene(model).MetresOf(0), 1.0) << factor;
  }
  model.extentUnits = -1;
  EXPECT_EQ(MeshScene(model).UnitName(), "");
}
