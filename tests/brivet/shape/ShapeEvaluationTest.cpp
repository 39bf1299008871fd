#ifdef BRIVET_HAS_SHAPE

#include "ShapeEvaluation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "MeshFixture.h"
#include "RecordingListener.h"
#include "ScratchDirectory.h"
#include "ShapeEvaluator.h"
#include "SolidText.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int kAll = ShapeEvaluator::Meshes | ShapeEvaluator::Properties;
constexpr double kPi = 3.14159265358979323846;

// Document with a product of each solid, its model after evaluation, and the warnings of the evaluation.
class Evaluated {
 public:
  explicit Evaluated(std::string const& data, std::string const& worker = BRIVET_SHAPE_WORKER, int parts = kAll,
                     int seconds = 60)
      : document(DocumentText(kContexts + data)) {
    Progress progress;
    auto* const found = const_cast<ProductModel*>(document->GetModel(true, progress));
    if (found == nullptr) throw std::runtime_error("no model");
    ShapeSettings settings;
    settings.worker = worker;
    settings.limits.seconds = seconds;
    RecordingListener listener;
    ShapeEvaluation(document.Path(), name, *found, parts).Run(settings);
    warnings = listener.Texts();
    model = found;
  }

  ModelProduct const& operator[](std::size_t product) const { return model->products.at(product); }
  ProductModel const& Model() const { return *model; }

  std::vector<std::string> warnings;

 private:
  std::string const name = "part.stp";
  ReadDocument document;
  ProductModel const* model;
};

// A box of 2 by 3 by 4 with a red face at x = 0, product 100 in millimetres or inches.
std::string BoxProduct(int context = 1) {
  std::vector<int> faces;
  int solid = 0;
  std::string text = BoxText(1000, 2, 3, 4, faces, solid);
  text += ProductText(100, "box", "#" + std::to_string(solid), context);
  text +=
      "#201=COLOUR_RGB('',1.,0.,0.);\n#202=FILL_AREA_STYLE_COLOUR('',#201);\n#203=FILL_AREA_STYLE('',(#202));\n"
      "#204=SURFACE_STYLE_FILL_AREA(#203);\n#205=SURFACE_SIDE_STYLE('',(#204));\n"
      "#206=SURFACE_STYLE_USAGE(.BOTH.,#205);\n#207=PRESENTATION_STYLE_ASSIGNMENT((#206));\n"
      "#208=STYLED_ITEM('',(#207),#" +
      std::to_string(faces[0]) + ");\n";
  return text;
}

std::string FakeWorker(ScratchDirectory& folder, std::string const& commands) {
  std::string path = folder.Write("worker", "#!/bin/sh\n" + commands);
  chmod(path.c_str(), 0755);
  return path;
}

double AreaOf(ModelMesh const& mesh) {
  double area = 0;
  for (std::size_t i = 0; i + 3 <= mesh.triangles.size(); i += 3) {
    double const* p[3];
    for (std::size_t k = 0; k < 3; ++k) p[k] = &mesh.points[3 * std::size_t{mesh.triangles[i + k]}];
    double const a[3] = {p[1][0] - p[0][0], p[1][1] - p[0][1], p[1][2] - p[0][2]};
    double const b[3] = {p[2][0] - p[0][0], p[2][1] - p[0][1], p[2][2] - p[0][2]};
    area += std::sqrt(std::pow(a[1] * b[2] - a[2] * b[1], 2) + std::pow(a[2] * b[0] - a[0] * b[2], 2) +
                      std::pow(a[0] * b[1] - a[1] * b[0], 2)) /
            2;
  }
  return area;
}

// Volume by the divergence theorem: positive only if the triangles are counterclockwise as seen from outside.
double VolumeOf(std::vector<ModelMesh> const& meshes) {
  double volume = 0;
  for (ModelMesh const& mesh : meshes) {
    for (std::size_t i = 0; i + 3 <= mesh.triangles.size(); i += 3) {
      double const* p[3];
      for (std::size_t k = 0; k < 3; ++k) p[k] = &mesh.points[3 * std::size_t{mesh.triangles[i + k]}];
      volume += (p[0][0] * (p[1][1] * p[2][2] - p[1][2] * p[2][1]) + p[0][1] * (p[1][2] * p[2][0] - p[1][0] * p[2][2]) +
                 p[0][2] * (p[1][0] * p[2][1] - p[1][1] * p[2][0])) /
                6;
    }
  }
  return volume;
}

}  // namespace

// 2 * 3 * 4 = 24, 2 (2 * 3 + 3 * 4 + 4 * 2) = 52.
TEST(ShapeEvaluationTest, EvaluatesBox) {
  Evaluated const evaluated(BoxProduct());
  EXPECT_THAT(evaluated.warnings, IsEmpty());
  ModelProduct const& box = evaluated[0];
  ASSERT_TRUE(box.computed.has_value());
  EXPECT_NEAR(box.computed->volume, 24, 1e-9);
  EXPECT_NEAR(box.computed->area, 52, 1e-9);
  EXPECT_NEAR(box.computed->centroid[0], 1, 1e-9);
  EXPECT_NEAR(box.computed->centroid[1], 1.5, 1e-9);
  EXPECT_NEAR(box.computed->centroid[2], 2, 1e-9);
  EXPECT_NEAR(box.computed->extent.low[0], 0, 1e-6);
  EXPECT_NEAR(box.computed->extent.high[2], 4, 1e-6);
  ASSERT_EQ(box.meshes.size(), 6U);
  EXPECT_NEAR(VolumeOf(box.meshes), 24, 1e-9);
}

TEST(ShapeEvaluationTest, MatchesFacesByInstance) {
  std::vector<int> faces;
  int solid = 0;
  BoxText(1000, 2, 3, 4, faces, solid);
  Evaluated const evaluated(BoxProduct());
  ASSERT_EQ(evaluated[0].meshes.size(), 6U);
  for (ModelMesh const& mesh : evaluated[0].meshes) {
    bool const isLow = mesh.instance == "#" + std::to_string(faces[0]);
    bool const isHigh = mesh.instance == "#" + std::to_string(faces[5]);
    ASSERT_EQ(mesh.normals.size(), mesh.points.size());
    if (isLow) {
      // x = 0, 3 by 4, red.
      EXPECT_NEAR(AreaOf(mesh), 12, 1e-9);
      EXPECT_EQ(mesh.points[0], 0);
      EXPECT_NEAR(mesh.normals[0], -1, 1e-6);
      ASSERT_GE(mesh.colour, 0);
      EXPECT_EQ(evaluated.Model().colours[static_cast<std::size_t>(mesh.colour)].colour.Hexadecimal(), "#ff0000");
    } else {
      EXPECT_EQ(mesh.colour, -1);
    }
    if (isHigh) {
      EXPECT_NEAR(AreaOf(mesh), 6, 1e-9);
      EXPECT_NEAR(mesh.points[2], 4, 1e-9);
      EXPECT_NEAR(mesh.normals[2], 1, 1e-6);
    }
  }
}

TEST(ShapeEvaluationTest, KeepsUnitOfProduct) {
  Evaluated const evaluated(BoxProduct(2));
  ASSERT_TRUE(evaluated[0].computed.has_value());
  EXPECT_NEAR(evaluated[0].computed->volume, 24, 1e-6);
  EXPECT_NEAR(evaluated[0].computed->area, 52, 1e-6);
  EXPECT_NEAR(evaluated[0].computed->extent.high[1], 3, 1e-6);
  EXPECT_NEAR(VolumeOf(evaluated[0].meshes), 24, 1e-6);
}

// Volume pi r^2 h, area 2 pi r (r + h). The chord error is 0.001 of the diagonal, 0.00374 for a radius of 1.
TEST(ShapeEvaluationTest, EvaluatesCylinder) {
  int solid = 0;
  std::string const text = CylinderText(1000, 1, 2.5, solid);
  Evaluated const evaluated(text + ProductText(100, "pin", "#" + std::to_string(solid)));
  EXPECT_THAT(evaluated.warnings, IsEmpty());
  ASSERT_TRUE(evaluated[0].computed.has_value());
  EXPECT_NEAR(evaluated[0].computed->volume, 2.5 * kPi, 1e-9);
  EXPECT_NEAR(evaluated[0].computed->area, 7 * kPi, 1e-9);
  EXPECT_NEAR(evaluated[0].computed->extent.low[0], -1, 1e-5);
  EXPECT_NEAR(evaluated[0].computed->extent.high[0], 1, 1e-5);
  EXPECT_NEAR(VolumeOf(evaluated[0].meshes), 2.5 * kPi, 0.08);
  for (ModelMesh const& mesh : evaluated[0].meshes) {
    for (std::size_t i = 0; i + 3 <= mesh.points.size(); i += 3) {
      EXPECT_LE(std::hypot(mesh.points[i], mesh.points[i + 1]), 1 + 1e-9);
    }
  }
}

TEST(ShapeEvaluationTest, EvaluatesOnlyWhatIsWanted) {
  Evaluated const meshes(BoxProduct(), BRIVET_SHAPE_WORKER, ShapeEvaluator::Meshes);
  EXPECT_FALSE(meshes[0].computed.has_value());
  EXPECT_EQ(meshes[0].meshes.size(), 6U);
  Evaluated const properties(BoxProduct(), BRIVET_SHAPE_WORKER, ShapeEvaluator::Properties);
  EXPECT_TRUE(properties[0].computed.has_value());
  EXPECT_TRUE(properties[0].meshes.empty());
}

TEST(ShapeEvaluationTest, DoesNotStartWithoutExactShape) {
  Evaluated const evaluated(ProductText(100, "p", "#12"), "/nosuch/worker");
  EXPECT_THAT(evaluated.warnings, IsEmpty());
}

// Two boxes that share corners but not edges, one of them open: five faces.
TEST(ShapeEvaluationTest, MeshesOpenShell) {
  std::vector<int> faces;
  int solid = 0;
  std::string text = BoxText(1000, 2, 3, 4, faces, solid);
  faces.pop_back();
  text += "#900=OPEN_SHELL('',(" + SolidText::List(faces) + "));\n#901=SHELL_BASED_SURFACE_MODEL('',(#900));\n" +
          ProductText(100, "tray", "#901");
  Evaluated const evaluated(text);
  EXPECT_EQ(evaluated[0].meshes.size(), 5U);
  ASSERT_TRUE(evaluated[0].computed.has_value());
  EXPECT_EQ(evaluated[0].computed->volume, 0);
  EXPECT_NEAR(evaluated[0].computed->area, 46, 1e-9);
}

TEST(ShapeEvaluationTest, ReportsFaceThatIsNotTransferred) {
  std::vector<int> faces;
  int solid = 0;
  std::string text = BoxText(1000, 2, 3, 4, faces, solid);
  text += "#900=PLANE('',$);\n#901=ADVANCED_FACE('',(),#900,.T.);\n#902=OPEN_SHELL('',(#" + std::to_string(faces[0]) +
          ",#901));\n#903=SHELL_BASED_SURFACE_MODEL('',(#902));\n" + ProductText(100, "part", "#903");
  Evaluated const evaluated(text);
  EXPECT_THAT(evaluated.warnings, testing::Contains(HasSubstr("part.stp: #901: ")));
  EXPECT_FALSE(evaluated[0].polylines.empty());
}

// The engine crashes if it transfers such a face.
TEST(ShapeEvaluationTest, SkipsFaceWithMissingReference) {
  std::vector<int> faces;
  int solid = 0;
  std::string text = BoxText(1000, 2, 3, 4, faces, solid);
  std::string const placement = "AXIS2_PLACEMENT_3D('',#";
  std::size_t const begin = text.find(placement) + placement.size();
  text.replace(begin, text.find(',', begin) - begin, "999999");
  Evaluated const evaluated(text + ProductText(100, "box", "#" + std::to_string(solid)));
  EXPECT_THAT(evaluated.warnings, testing::Contains("part.stp: #" + std::to_string(faces[0]) +
                                                    ": the face depends on a damaged or missing instance"));
  EXPECT_EQ(evaluated[0].meshes.size(), 5U);
}

TEST(ShapeEvaluationTest, KeepsEdgesIfWorkerFails) {
  ScratchDirectory folder;
  struct Row {
    char const* commands;
    char const* reason;
  };
  for (Row const& row :
       {Row{"kill -SEGV $$\n", "the shape worker has crashed: Segmentation fault"},
        Row{"exit 7\n", "the memory limit of 8192 MB was reached; the option Shape.*.Reader.MemoryLimit raises it"},
        Row{"exit 21\n", "the engine cannot read the file"},
        Row{"exit 1\n", "the shape worker has failed with status 1"},
        Row{"exit 0\n", "the answer of the shape worker is incomplete"},
        Row{"while :; do :; done\n",
            "the time limit of 1 s was reached; the option Shape.*.Reader.TimeLimit raises it"},
        Row{"echo garbage\n", "the shape worker is not usable: it is of another version"},
        Row{"printf BRVSHP01; exec cat /dev/zero\n", "the shape worker is not usable: it sends an unknown record"},
        Row{"printf 'BRVSHP01\\001\\0\\0\\0\\377\\377\\377\\377'; exec cat /dev/urandom\n",
            "the time limit of 1 s was reached; the option Shape.*.Reader.TimeLimit raises it"}}) {
    Evaluated const evaluated(BoxProduct(), FakeWorker(folder, row.commands), kAll, 1);
    if (std::string(row.commands).find("urandom") == std::string::npos) {
      EXPECT_THAT(evaluated.warnings,
                  ElementsAre(std::string("part.stp: exact shapes are not evaluated: ") + row.reason));
    } else {
      // A content of 4 GB: the limit of time or of bytes ends it.
      EXPECT_EQ(evaluated.warnings.size(), 1U);
    }
    EXPECT_FALSE(evaluated.Model().evaluationFailure.empty()) << row.commands;
    EXPECT_TRUE(evaluated[0].meshes.empty()) << row.commands;
    EXPECT_FALSE(evaluated[0].computed.has_value());
    EXPECT_EQ(evaluated[0].polylines.size(), 12U);
  }
  Evaluated const missing(BoxProduct(), "/nosuch/worker");
  EXPECT_THAT(
      missing.warnings,
      ElementsAre("part.stp: exact shapes are not evaluated: the shape worker does not start: Open CASCADE 7.6 is "
                  "not installed"));
  EXPECT_EQ(missing.Model().evaluationFailure, "the shape worker does not start: Open CASCADE 7.6 is not installed");
}

// After a crash the products before it are kept.
TEST(ShapeEvaluationTest, KeepsCompleteProductsAfterCrash) {
  ScratchDirectory folder;
  std::string const worker =
      FakeWorker(folder, std::string("'") + BRIVET_SHAPE_WORKER + "' \"$1\" | head -c -12\n" + "kill -SEGV $$\n");
  Evaluated const evaluated(BoxProduct(), worker);
  EXPECT_THAT(evaluated.warnings, ElementsAre(HasSubstr("crashed")));
  EXPECT_EQ(evaluated[0].meshes.size(), 6U);
}

TEST(ShapeEvaluationTest, ReportsUnreadableFile) {
  ProductModel model = PlateModel();
  model.products[0].meshes.clear();
  model.products[0].shapes = {"#5"};
  model.products[0].faces = 1;
  model.products[0].visibleFaces = {{"#6", -1}};
  ScratchDirectory folder;
  ShapeSettings settings;
  settings.worker = BRIVET_SHAPE_WORKER;
  RecordingListener listener;
  std::string const name = "bad.stp";
  for (std::string const& text : {std::string("not a STEP file"), std::string(), std::string("ISO-10303-21;\n")}) {
    ShapeEvaluation(folder.Write("bad.stp", text), name, model, kAll).Run(settings);
  }
  EXPECT_TRUE(model.products[0].meshes.empty());
  for (std::string const& each : listener.Texts())
    EXPECT_THAT(each, HasSubstr("bad.stp: exact shapes are not evaluated"));
}

TEST(ShapeEvaluationTest, WritesRequest) {
  ProductModel model = PlateModel();
  model.products[0].faces = 1;
  model.products[0].shapes = {"#5", "name", "#", "#99999999999", "#12x", "#7"};
  ModelProduct exact = model.products[0];
  exact.meshes.clear();
  exact.visibleFaces = {{"#6", -1}};
  model.products.push_back(exact);
  std::string const path = "part.stp";
  ShapeSettings const settings;
  EXPECT_EQ(ShapeEvaluation(path, path, model, kAll).RequestOf(settings), "3 0.001 0.3\n0 5 7\n1 5 7\n");
  EXPECT_EQ(ShapeEvaluation(path, path, model, ShapeEvaluator::Meshes).RequestOf(settings), "1 0.001 0.3\n0\n1 5 7\n");
  EXPECT_EQ(ShapeEvaluation(path, path, model, ShapeEvaluator::Properties).RequestOf(settings),
            "2 0.001 0.3\n0 5 7\n0 5 7\n");
}

TEST(ShapeEvaluationTest, LeavesOutInvisibleFaces) {
  ProductModel model = PlateModel();
  ModelProduct& product = model.products[0];
  product.meshes.clear();
  product.visibleFaces = {{"#20", 0}};
  ShapeAnswer answer(1, 0);
  answer.Products()[0].isDone = true;
  for (std::uint32_t const instance : {20U, 21U, 0U}) {
    ShapeAnswer::Face face;
    face.instance = instance;
    face.item = 10;
    face.mesh = Mesh({0, 0, 0, 500, 0, 0, 0, 500, 0}, {0, 1, 2});
    answer.Products()[0].faces.push_back(face);
  }
  std::string const path = "part.stp";
  ShapeEvaluation(path, path, model, kAll).Apply(answer);
  ASSERT_EQ(product.meshes.size(), 2U);
  EXPECT_EQ(product.meshes[0].instance, "#20");
  EXPECT_EQ(product.meshes[0].colour, 0);
  EXPECT_EQ(product.meshes[0].points[3], 1);  // 500 mm in a unit of half a metre
  EXPECT_EQ(product.meshes[1].instance, "#10");
}

// Volume, area and centroid that the author of the file stored.
TEST(ShapeEvaluationTest, AgreesWithValidationProperties) {
  char const* const folder = std::getenv("VREL_MODELS");
  if (folder == nullptr) GTEST_SKIP() << "VREL_MODELS is not set";
  ReadDocument document(FileText(std::string(folder) + "/validation-properties.stp"));
  Progress progress;
  auto& model = const_cast<ProductModel&>(*document->GetModel(true, progress));
  ShapeSettings settings;
  settings.worker = BRIVET_SHAPE_WORKER;
  std::string const name = "part.stp";
  ShapeEvaluation(document.Path(), name, model, kAll).Run(settings);
  ASSERT_TRUE(model.products[0].computed.has_value());
  ModelComputed const& computed = *model.products[0].computed;
  int compared = 0;
  for (ModelProperty const& property : model.properties) {
    if (property.kind != ModelProperty::Validation || property.product != model.products[0].definition) continue;
    for (ModelPropertyValue const& value : property.values) {
      if (value.number.has_value() && value.name == "volume measure") {
        EXPECT_NEAR(computed.volume / *value.number, 1, 1e-6);
        ++compared;
      } else if (value.number.has_value() && value.name == "surface area measure") {
        EXPECT_NEAR(computed.area / *value.number, 1, 1e-6);
        ++compared;
      } else if (value.point.size() == 3) {
        for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(computed.centroid[i], value.point[i], 1e-4);
        ++compared;
      }
    }
  }
  EXPECT_GE(compared, 3);
}

#endif
