// Damaged and extreme geometry, evaluated by the real worker.
#ifdef BRIVET_HAS_SHAPE

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "MeshFixture.h"
#include "ModelFixture.h"
#include "RecordingListener.h"
#include "ShapeEvaluation.h"
#include "ShapeEvaluator.h"
#include "SolidText.h"

namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// The model of a document after evaluation, and the warnings of the evaluation.
struct Evaluated {
  ProductModel model;
  std::vector<std::string> warnings;

  explicit Evaluated(std::string const& data) {
    ReadDocument document(DocumentText(kContexts + data));
    Progress progress;
    ProductModel const* const found = document->GetModel(true, progress);
    if (found == nullptr) throw std::runtime_error("no model");
    model = *found;
    ShapeSettings settings;
    settings.worker = BRIVET_SHAPE_WORKER;
    settings.limits.seconds = 60;
    std::string const name = "part.stp";
    RecordingListener listener;
    ShapeEvaluation(document.Path(), name, model, ShapeEvaluator::Meshes | ShapeEvaluator::Properties).Run(settings);
    warnings = listener.Texts();
  }
};

// Returns the instances of a box as a solid, and sets its faces.
std::string Box(double a, double b, double c, std::vector<int>& faces) {
  int solid = 0;
  std::string const text = BoxText(1000, a, b, c, faces, solid);
  return text + ProductText(100, "box", "#" + std::to_string(solid));
}

// Replaces the first occurrence, which must exist.
std::string Replaced(std::string text, std::string const& what, std::string const& with, std::size_t from = 0) {
  std::size_t const at = text.find(what, from);
  EXPECT_NE(at, text.npos) << what;
  return at == text.npos ? text : text.replace(at, what.size(), with);
}

// All numbers can be drawn, normals have a length of one, and indices are valid.
void ExpectSound(ModelProduct const& product) {
  for (ModelMesh const& mesh : product.meshes) {
    for (double const each : mesh.points) ASSERT_LE(std::abs(each), kLargestCoordinate);
    ASSERT_EQ(mesh.normals.size(), mesh.points.size());
    for (std::size_t i = 0; i + 2 < mesh.normals.size(); i += 3) {
      ASSERT_NEAR(std::hypot(mesh.normals[i], mesh.normals[i + 1], mesh.normals[i + 2]), 1, 1e-3);
    }
    for (std::uint32_t const each : mesh.triangles) ASSERT_LT(each, mesh.points.size() / 3);
  }
  if (product.computed.has_value()) {
    EXPECT_TRUE(std::isfinite(product.computed->volume));
    EXPECT_TRUE(std::isfinite(product.computed->area));
  }
}

// A quadrangle from four points as a face of a plane at the first one.
int Quadrangle(SolidText& text, double const (&corners)[4][3], double const (&normal)[3],
               double const (&reference)[3]) {
  int vertices[4];
  for (int i = 0; i < 4; ++i) vertices[i] = text.Vertex(corners[i][0], corners[i][1], corners[i][2]);
  std::vector<int> edges;
  for (int i = 0; i < 4; ++i) {
    edges.push_back(text.Line(vertices[i], vertices[(i + 1) % 4], corners[i], corners[(i + 1) % 4]));
  }
  int const point = text.Point(corners[0][0], corners[0][1], corners[0][2]);
  int const axis = text.Direction(normal[0], normal[1], normal[2]);
  int const along = text.Direction(reference[0], reference[1], reference[2]);
  int const placement = text.Placement(point, axis, along);
  return text.Face(edges, text.Add("PLANE('',#" + std::to_string(placement) + ")"));
}

std::string ShellText(SolidText& text, std::vector<int> const& faces) {
  int const shell = text.Add("OPEN_SHELL('',(" + SolidText::List(faces) + "))");
  int const surface = text.Add("SHELL_BASED_SURFACE_MODEL('',(#" + std::to_string(shell) + "))");
  return text.Text() + ProductText(100, "shell", "#" + std::to_string(surface));
}

}  // namespace

// Two squares of 2 by 2 that cross in the middle. The areas add up.
TEST(ShapeBadInputTest, EvaluatesSelfIntersectingShell) {
  SolidText text(1000);
  int const flat = Quadrangle(text, {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}}, {0, 0, 1}, {1, 0, 0});
  int const upright = Quadrangle(text, {{-1, 0, -1}, {1, 0, -1}, {1, 0, 1}, {-1, 0, 1}}, {0, -1, 0}, {1, 0, 0});
  Evaluated const evaluated(ShellText(text, {flat, upright}));
  EXPECT_THAT(evaluated.warnings, IsEmpty());
  ModelProduct const& product = evaluated.model.products[0];
  EXPECT_EQ(product.meshes.size(), 2U);
  ExpectSound(product);
  ASSERT_TRUE(product.computed.has_value());
  EXPECT_NEAR(product.computed->area, 8, 1e-9);
  EXPECT_EQ(product.computed->volume, 0);
}

// A bow tie: the boundary of the face crosses itself.
TEST(ShapeBadInputTest, SurvivesSelfIntersectingLoop) {
  SolidText text(1000);
  int const face = Quadrangle(text, {{-1, -1, 0}, {1, 1, 0}, {1, -1, 0}, {-1, 1, 0}}, {0, 0, 1}, {1, 0, 0});
  Evaluated const evaluated(ShellText(text, {face}));
  EXPECT_EQ(evaluated.model.evaluationFailure, "");
  EXPECT_EQ(evaluated.model.products[0].polylines.size(), 4U);
  ExpectSound(evaluated.model.products[0]);
}

// The fourth corner is the first one, so that the last edge has no length.
TEST(ShapeBadInputTest, EvaluatesEdgeWithoutLength) {
  SolidText text(1000);
  int const face = Quadrangle(text, {{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {0, 0, 0}}, {0, 0, 1}, {1, 0, 0});
  int const other = Quadrangle(text, {{5, 0, 0}, {6, 0, 0}, {6, 1, 0}, {5, 1, 0}}, {0, 0, 1}, {1, 0, 0});
  Evaluated const evaluated(ShellText(text, {face, other}));
  EXPECT_EQ(evaluated.model.evaluationFailure, "");
  ModelProduct const& product = evaluated.model.products[0];
  EXPECT_FALSE(product.polylines.empty());
  ExpectSound(product);
  bool hasOther = false;
  for (ModelMesh const& mesh : product.meshes) hasOther = hasOther || mesh.instance == "#" + std::to_string(other);
  EXPECT_TRUE(hasOther);
}

// All corners at one point: there is nothing to show.
TEST(ShapeBadInputTest, ReportsFaceWithoutArea) {
  SolidText text(1000);
  int const face = Quadrangle(text, {{1, 1, 1}, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}}, {0, 0, 1}, {1, 0, 0});
  Evaluated const evaluated(ShellText(text, {face}));
  EXPECT_EQ(evaluated.model.evaluationFailure, "");
  EXPECT_THAT(evaluated.warnings, Contains(HasSubstr("part.stp: #" + std::to_string(face) + ": ")));
  ExpectSound(evaluated.model.products[0]);
}

TEST(ShapeBadInputTest, EvaluatesHugeBox) {
  std::vector<int> faces;
  Evaluated const evaluated(Box(1e9, 2e9, 3e9, faces));
  EXPECT_EQ(evaluated.model.evaluationFailure, "");
  ModelProduct const& product = evaluated.model.products[0];
  EXPECT_EQ(product.meshes.size(), 6U);
  ExpectSound(product);
  ASSERT_TRUE(product.computed.has_value());
  EXPECT_NEAR(product.computed->volume / 6e27, 1, 1e-9);
  EXPECT_NEAR(product.computed->area / 22e18, 1, 1e-9);
}

// The tolerance of the engine is 1e-7: all corners of such a box are one point for it.
TEST(ShapeBadInputTest, SurvivesTinyBox) {
  std::vector<int> faces;
  std::string text = Box(2, 3, 4, faces);
  for (char const* axis : {"2.000000", "3.000000", "4.000000"}) {
    std::string const tiny = std::string(1, axis[0]) + ".E-9";
    for (std::size_t at = text.find(axis); at != text.npos; at = text.find(axis, at)) text.replace(at, 8, tiny);
  }
  Evaluated const evaluated(text);
  EXPECT_EQ(evaluated.model.evaluationFailure, "");
  EXPECT_THAT(evaluated.warnings, Each(HasSubstr("part.stp: #")));
  EXPECT_EQ(evaluated.model.products[0].polylines.size(), 12U);
  ExpectSound(evaluated.model.products[0]);
}

// A box of 2 by 3 by 4 micrometres, in millimetres.
TEST(ShapeBadInputTest, EvaluatesSmallBox) {
  std::vector<int> faces;
  std::string text = Box(2, 3, 4, faces);
  for (char const* axis : {"2.000000", "3.000000", "4.000000"}) {
    std::string const small = std::string(1, axis[0]) + ".E-3";
    for (std::size_t at = text.find(axis); at != text.npos; at = text.find(axis, at)) text.replace(at, 8, small);
  }
  Evaluated const evaluated(text);
  EXPECT_THAT(evaluated.warnings, IsEmpty());
  ModelProduct const& product = evaluated.model.products[0];
  EXPECT_EQ(product.meshes.size(), 6U);
  ASSERT_TRUE(product.computed.has_value());
  EXPECT_NEAR(product.computed->volume / 24e-9, 1, 1e-6);
  EXPECT_NEAR(product.computed->area / 52e-6, 1, 1e-6);
}

// Numbers that are no numbers, or too large for one.
TEST(ShapeBadInputTest, SurvivesInvalidNumbers) {
  std::vector<int> faces;
  std::string const text = Box(2, 3, 4, faces);
  for (char const* number : {"1.E+999", "-1.E+999", "1.E+308", "1.E-400", "NAN", "INF", "'2'", "$", "*", "()"}) {
    Evaluated const evaluated(Replaced(text, "(2.000000,0.000000,0.000000)", std::string("(") + number + ",0.,0.)"));
    ExpectSound(evaluated.model.products[0]);
    EXPECT_THAT(evaluated.warnings, Each(HasSubstr("part.stp: "))) << number;
  }
  for (char const* radius : {"0.", "-1.", "1.E+999", "1.E-300", "$"}) {
    int solid = 0;
    std::string pin = CylinderText(1000, 7, 2.5, solid);
    pin += ProductText(100, "pin", "#" + std::to_string(solid));
    Evaluated const evaluated(
        Replaced(pin, "CYLINDRICAL_SURFACE('',#1005,7.000000", std::string("CYLINDRICAL_SURFACE('',#1005,") + radius));
    ExpectSound(evaluated.model.products[0]);
  }
}

// Directions of length zero, and an axis along its reference direction.
TEST(ShapeBadInputTest, SurvivesInvalidDirections) {
  std::vector<int> faces;
  std::string const text = Box(2, 3, 4, faces);
  for (char const* direction : {"(0.,0.,0.)", "(1.E-320,0.,0.)", "(1.E+300,1.E+300,0.)", "(1.)", "(1.,0.)"}) {
    Evaluated const evaluated(
        Replaced(text, "DIRECTION('',(-1.000000,0.000000,0.000000)", std::string("DIRECTION('',") + direction));
    EXPECT_EQ(evaluated.model.evaluationFailure, "") << direction;
    EXPECT_EQ(evaluated.model.products[0].polylines.size(), 12U);
    ExpectSound(evaluated.model.products[0]);
  }
}

// Points with too few coordinates, which the engine would use without a check.
TEST(ShapeBadInputTest, SkipsFacesOfPointsWithoutCoordinates) {
  std::vector<int> faces;
  std::string const text = Box(2, 3, 4, faces);
  for (char const* point : {"()", "(2.)", "(2.,0.)"}) {
    // The corner (2, 0, 0), of three faces and the lines from it.
    Evaluated const evaluated(Replaced(text, "(2.000000,0.000000,0.000000)", point));
    EXPECT_EQ(evaluated.model.evaluationFailure, "") << point;
    EXPECT_EQ(evaluated.model.products[0].meshes.size(), 3U) << point;
    EXPECT_EQ(evaluated.warnings.size(), 3U) << point;
    EXPECT_THAT(evaluated.warnings, Each(HasSubstr("the face depends on a damaged or missing instance")));
  }
}

// The engine would crash or loop with such a radius.
TEST(ShapeBadInputTest, SkipsFacesThatCrashEngine) {
  int solid = 0;
  std::string text = CylinderText(1000, 7, 2.5, solid);
  text += ProductText(100, "pin", "#" + std::to_string(solid));
  for (char const* const type : {"CIRCLE(''", "CYLINDRICAL_SURFACE(''"}) {
    std::size_t const at = text.find(type);
    ASSERT_NE(at, text.npos);
    Evaluated const evaluated(Replaced(text, "7.000000);", "1.E+300);", at));
    EXPECT_EQ(evaluated.model.evaluationFailure, "") << type;
    EXPECT_THAT(evaluated.warnings, Contains(HasSubstr("the face depends on a damaged or missing instance"))) << type;
    EXPECT_FALSE(evaluated.model.products[0].meshes.empty()) << type;
    ExpectSound(evaluated.model.products[0]);
  }
}

// The engine would crash with empty lists while it reads them.
TEST(ShapeBadInputTest, SkipsFacesOfEmptyLists) {
  std::vector<int> faces;
  std::string const text = Box(2, 3, 4, faces);
  std::string const axis = "DIRECTION('',(-1.000000,0.000000,0.000000)";
  std::string loop = text;
  std::size_t const begin = loop.find("EDGE_LOOP('',(") + 14;
  loop.erase(begin, loop.find(')', begin) - begin);
  for (std::string const& data : {Replaced(text, axis, "DIRECTION('',()"), Replaced(text, axis, "DIRECTION('',$"),
                                  Replaced(text, axis, "DIRECTION('',#1"), loop}) {
    Evaluated const evaluated(data);
    EXPECT_EQ(evaluated.model.evaluationFailure, "");
    EXPECT_THAT(evaluated.warnings, ElementsAre("part.stp: #" + std::to_string(faces[0]) +
                                                ": the face depends on a damaged or missing instance"));
    EXPECT_EQ(evaluated.model.products[0].meshes.size(), 5U);
    EXPECT_FALSE(evaluated.model.products[0].polylines.empty());
  }
}

// Types of instances that do not fit, which the engine must not take for others.
TEST(ShapeBadInputTest, SurvivesReferencesToOtherTypes) {
  std::vector<int> faces;
  std::string const text = Box(2, 3, 4, faces);
  struct Row {
    char const* what;
    char const* with;
  };
  for (Row const& row :
       {Row{"=PLANE('',#", "=PLANE('',#1/*"}, Row{"EDGE_LOOP('',(", "EDGE_LOOP('',(#1000,"},
        Row{"CLOSED_SHELL('',(", "CLOSED_SHELL('',(#1000,"}, Row{"FACE_OUTER_BOUND('',#", "FACE_OUTER_BOUND('',#11,#"},
        Row{"VERTEX_POINT('',#", "VERTEX_POINT('',#3,#"},
        Row{"MANIFOLD_SOLID_BREP('',#", "MANIFOLD_SOLID_BREP('',#102,#"}}) {
    Evaluated const evaluated(Replaced(text, row.what, row.with));
    for (ModelProduct const& product : evaluated.model.products) ExpectSound(product);
    EXPECT_THAT(evaluated.warnings, Each(HasSubstr("part.stp: "))) << row.with;
  }
}

// The shell contains itself by way of its loop, and a face has its own loop as surface.
TEST(ShapeBadInputTest, SurvivesCycles) {
  std::vector<int> faces;
  std::string const text = Box(2, 3, 4, faces);
  std::string const face = "#" + std::to_string(faces[0]);
  for (std::string const& data :
       {Replaced(text, "FACE_OUTER_BOUND('',#", "FACE_OUTER_BOUND('',#" + face.substr(1) + ",.T.);#9000=A(#"),
        Replaced(text, "CLOSED_SHELL('',(" + face, "CLOSED_SHELL('',(" + face + "," + face)}) {
    Evaluated const evaluated(data);
    ExpectSound(evaluated.model.products[0]);
    EXPECT_THAT(evaluated.warnings, Each(HasSubstr("part.stp: ")));
  }
}

#endif
