#include "ModelRecords.h"

#include <gtest/gtest.h>

#include <vector>

#include "VRELString.h"

TEST(ModelRecordsTest, ConvertsPlacements) {
  VRELAssemblyComponentTransform const transform =
      ComponentTransformOf(Placement({0, -1, 0, 5, 1, 0, 0, 6, 0, 0, 1, 7}));
  float point[3] = {1, 2, 3};
  EXPECT_EQ(transform.ApplyTransform(point), VREL_S_OK);
  EXPECT_EQ(std::vector<float>(point, point + 3), (std::vector<float>{3, 7, 10}));
}

TEST(ModelRecordsTest, ConvertsColours) {
  float rgba[4];
  EXPECT_EQ(RgbColorOf({0.25, 0.5, 1.0, 0.75}).GetRGBA(rgba), VREL_S_OK);
  EXPECT_EQ(std::vector<float>(rgba, rgba + 4), (std::vector<float>{0.25F, 0.5F, 1.0F, 0.25F}));
}

TEST(ModelRecordsTest, ConvertsUnits) {
  ModelUnits units;
  EXPECT_EQ(LengthUnitOf(units), VRELUnitMeter);
  units.metres = 0.0254;
  EXPECT_EQ(LengthUnitOf(units), VRELUnitInch);
  units.metres = 0.123;
  EXPECT_EQ(LengthUnitOf(units), VRELUnitUnknown);
}

TEST(ModelRecordsTest, ConvertsCameras) {
  ModelView view;
  EXPECT_EQ(CameraOf(view).GetAngle(), 45.0F);
  view.camera = ModelCamera();
  view.camera->eye[2] = 10.0;
  view.camera->height = 20.0;
  float direction[3];
  EXPECT_EQ(CameraOf(view).GetDirection(direction), VREL_S_OK);
  EXPECT_EQ(std::vector<float>(direction, direction + 3), (std::vector<float>{0, 0, -1}));
  EXPECT_EQ(CameraOf(view).GetAngle(), 0.0F);
  view.camera->isPerspective = true;
  EXPECT_NEAR(CameraOf(view).GetAngle(), 90.0F, 1e-4F);
}

TEST(ModelRecordsTest, ConvertsLayers) {
  VRELLayerFilterC const filter = LayerFilterOf({3, 7}, "visible");
  int layer = 0;
  EXPECT_EQ(filter.GetLayerAt(1, layer), VREL_S_OK);
  EXPECT_EQ(layer, 7);
  VRELString name;
  EXPECT_EQ(filter.GetName(name), VREL_S_OK);
  EXPECT_EQ(name.toUtf8(), "visible");
  ModelLayer described;
  described.name = "outline";
  described.items = {"#1", "#2"};
  VRELSelectionSet const set = SelectionSetOf(described);
  EXPECT_EQ(set.GetName().toUtf8(), "outline");
  EXPECT_EQ(set.SelectionSetLength(), 2);
  EXPECT_TRUE(set.IsMember(&described.items[1]));
}

TEST(ModelRecordsTest, ConvertsPolylines) {
  PolylineArrays const arrays({{"#1", {0, 0, 0, 1, 0, 0}, -1}, {"#2", {2, 2, 2, 3, 3, 3, 4, 4, 4}, -1}});
  VRELPolylineSet const set = arrays.Set(9);
  EXPECT_EQ(set.GetKey(), 9);
  int count = 0;
  float* points = nullptr;
  EXPECT_EQ(set.GetPoints(count, points), VREL_S_OK);
  ASSERT_EQ(count, 5);
  EXPECT_EQ(points[6], 2.0F);
  int* sizes = nullptr;
  EXPECT_EQ(set.GetPolylines(count, sizes), VREL_S_OK);
  EXPECT_EQ(std::vector<int>(sizes, sizes + count), (std::vector<int>{2, 3}));
}

TEST(ModelRecordsTest, ConvertsMeshes) {
  ModelMesh mesh;
  mesh.points = {0, 0, 0, 1, 0, 0, 0, 1, 0};
  mesh.triangles = {0, 1, 2};
  VRELSurfacicShell shell(1, 0, 0);
  EXPECT_EQ(CopyToShell(mesh, shell), VREL_S_OK);
  int count = 0;
  int* faces = nullptr;
  EXPECT_EQ(shell.GetFaces(count, faces), VREL_S_OK);
  EXPECT_EQ(std::vector<int>(faces, faces + count), (std::vector<int>{0, 1, 2}));
  float* points = nullptr;
  EXPECT_EQ(shell.GetPoints(count, points), VREL_S_OK);
  EXPECT_EQ(count, 3);
  EXPECT_EQ(points[7], 1.0F);
}
