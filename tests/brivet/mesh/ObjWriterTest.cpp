#include "ObjWriter.h"

#include <gtest/gtest.h>

#include <string>

#include "MeshFixture.h"

TEST(ObjWriterTest, WritesTriangle) {
  EXPECT_EQ(Written<ObjWriter>(PlateModel()),
            "# part.stp by brivet\n# unit: half\no plate\nv 0 0 0 1 0 0\nv 2 0 0 1 0 0\nv 0 1 0 1 0 0\nf 1 2 3\n");
}

TEST(ObjWriterTest, WritesNormals) {
  ProductModel model = PlateModel();
  model.products[0].meshes[0].normals = {0, 0, 2, 0, 0, 1, 3, 0, 4};
  model.products[0].meshes[0].colour = -1;
  EXPECT_EQ(Written<ObjWriter>(model),
            "# part.stp by brivet\n# unit: half\no plate\nv 0 0 0\nv 2 0 0\nv 0 1 0\nvn 0 0 1\nvn 0 0 1\nvn 0.6 0 0.8\n"
            "f 1//1 2//2 3//3\n");
}

// Indices count on over all objects; a mirrored placement reverses the triangle and mirrors its normals.
TEST(ObjWriterTest, PlacesOccurrences) {
  ProductModel model = AssemblyModel();
  model.products[0].meshes[0].normals = {1, 0, 0, 1, 0, 0, 0, 0, 1};
  EXPECT_EQ(Written<ObjWriter>(model),
            "# part.stp by brivet\n# unit: metre\n"
            "o moved\nv 3 0 0 1 0 0\nv 4 0 0 1 0 0\nv 3 0.5 0 1 0 0\nvn 1 0 0\nvn 1 0 0\nvn 0 0 1\nf 1//1 2//2 3//3\n"
            "o mirrored\nv 0 0 0 1 0 0\nv -1 0 0 1 0 0\nv 0 0.5 0 1 0 0\nvn -1 0 0\nvn -1 0 0\nvn 0 0 1\n"
            "f 6//6 5//5 4//4\n");
}

TEST(ObjWriterTest, WritesNamesInOneLine) {
  ProductModel model = PlateModel();
  model.products[0].name = "left plate\nf 1 1 1\\";
  EXPECT_NE(Written<ObjWriter>(model).find("\no left_plate_f_1_1_1_\nv "), std::string::npos);
  model.products[0].name = "";
  EXPECT_NE(Written<ObjWriter>(model).find("\no unnamed\n"), std::string::npos);
}
