#include "MeshWriter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "BinaryStlWriter.h"
#include "GlbWriter.h"
#include "MeshFixture.h"
#include "ObjWriter.h"
#include "PageFixture.h"
#include "RecordingListener.h"

TEST(MeshWriterTest, RefusesDocumentWithoutMeshes) {
  RecordingListener listener;
  EXPECT_EQ(Written<GlbWriter>(ProductModel(), VREL_E_NOT_SUPPORTED), "");
  EXPECT_EQ(listener.Texts(),
            (std::vector<std::string>{"folder/part.stp: the document contains no meshes, which glb requires",
                                      "hint: the package brivet-shape meshes the exact shapes of STEP files"}));
}

TEST(MeshWriterTest, ReportsTrianglesLeftOut) {
  RecordingListener listener;
  ProductModel model = PlateModel();
  model.products[0].meshes[0].triangles = {0, 1, 2, 0, 1, 1};
  EXPECT_NE(Written<ObjWriter>(model), "");
  EXPECT_EQ(listener.Texts(), (std::vector<std::string>{"folder/part.stp: 1 triangle without an area is left out"}));
}

TEST(MeshWriterTest, ReportsFullDisk) {
  ModelDocument document(PlateModel());
  Progress progress;
  BrivetWriteRequest request;
  request.document = &document;
  request.progress = &progress;
  for (int room : {0, 10, 80}) {
    FullStream stream(room);
    request.stream = &stream;
    EXPECT_EQ(GlbWriter().Write(request), VREL_E_FILE_SAVE);
    FullStream again(room);
    request.stream = &again;
    EXPECT_EQ(ObjWriter().Write(request), VREL_E_FILE_SAVE);
    FullStream last(room);
    request.stream = &last;
    EXPECT_EQ(BinaryStlWriter().Write(request), VREL_E_FILE_SAVE);
  }
}

TEST(MeshWriterTest, ComputesNormal) {
  double const corners[3][3] = {{1, 1, 1}, {1, 3, 1}, {1, 1, 4}};
  double normal[3];
  ComputeNormal(corners, normal);
  EXPECT_EQ(std::vector<double>(normal, normal + 3), (std::vector<double>{1, 0, 0}));
  double const line[3][3] = {{0, 0, 0}, {1, 1, 1}, {2, 2, 2}};
  ComputeNormal(line, normal);
  EXPECT_EQ(std::vector<double>(normal, normal + 3), (std::vector<double>{0, 0, 0}));
}
