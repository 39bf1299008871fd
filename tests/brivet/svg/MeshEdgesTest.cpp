#include "MeshEdges.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "ProductModel.h"

namespace {

// Two triangles that share the edge from (0, 0, 0) to (0, 1, 0); the second one rises by `height`.
ModelMesh Fold(double height) {
  ModelMesh mesh;
  mesh.points = {0, 0, 0, 0, 1, 0, -1, 0, 0, 1, 0, height};
  mesh.triangles = {0, 1, 2, 1, 0, 3};
  return mesh;
}

}  // namespace

TEST(MeshEdgesTest, ReturnsBoundary) {
  EXPECT_EQ(SharpEdges(Fold(0.0)), (std::vector<double>{0, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0,  //
                                                        0, 1, 0, -1, 0, 0, 0, 1, 0, 1, 0, 0}));
}

TEST(MeshEdgesTest, ReturnsSharpEdges) {
  EXPECT_EQ(SharpEdges(Fold(0.5)).size(), 24U);  // 27 degrees
  EXPECT_EQ(SharpEdges(Fold(0.6)).size(), 30U);  // 31 degrees
  EXPECT_EQ(SharpEdges(Fold(-0.6)).size(), 30U);
}

TEST(MeshEdgesTest, JoinsEqualPoints) {
  ModelMesh mesh;
  mesh.points = {0, 0, 0, 0, 1, 0, -1, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0};
  mesh.triangles = {0, 1, 2, 3, 4, 5};
  EXPECT_EQ(SharpEdges(mesh).size(), 24U);
}

TEST(MeshEdgesTest, AcceptsOppositeOrientation) {
  ModelMesh mesh = Fold(0.0);
  mesh.triangles = {0, 1, 2, 0, 1, 3};
  EXPECT_EQ(SharpEdges(mesh).size(), 24U);
}

TEST(MeshEdgesTest, SkipsDamagedTriangles) {
  ModelMesh mesh = Fold(0.0);
  mesh.triangles = {0, 1, 2, 1, 0, 99, 0, 0, 1, 2};
  EXPECT_EQ(SharpEdges(mesh).size(), 18U);
  mesh.points[0] = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(SharpEdges(mesh).size(), 18U);
  EXPECT_TRUE(SharpEdges(ModelMesh()).empty());
}
