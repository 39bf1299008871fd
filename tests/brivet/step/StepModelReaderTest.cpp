#include "StepModelReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "ModelFixture.h"

namespace {

struct Counts {
  char const* file;
  std::size_t products, occurrences, layers, annotations, properties, views;
  long solids, faces, edges;
};

// Counted with grep.
void ExpectCounts(char const* variable, std::vector<Counts> const& rows) {
  char const* const folder = std::getenv(variable);
  if (folder == nullptr) GTEST_SKIP() << "set " << variable << " to a folder of STEP files to run this test";
  for (Counts const& row : rows) {
    SCOPED_TRACE(row.file);
    ReadDocument document(FileText(std::string(folder) + "/" + row.file), row.file, false);
    Progress progress;
    ProductModel const* const model = document->GetModel(false, progress);
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(model->warnings, std::vector<std::string>());
    EXPECT_EQ(model->products.size(), row.products);
    EXPECT_EQ(model->occurrences.size(), row.occurrences);
    EXPECT_EQ(model->layers.size(), row.layers);
    EXPECT_EQ(model->annotations.size(), row.annotations);
    EXPECT_EQ(model->properties.size(), row.properties);
    EXPECT_EQ(model->views.size(), row.views);
    long solids = 0;
    long faces = 0;
    long edges = 0;
    for (ModelProduct const& product : model->products) {
      solids += product.solids;
      faces += product.faces;
      edges += product.edges;
    }
    EXPECT_EQ(solids, row.solids);
    EXPECT_EQ(faces, row.faces);
    EXPECT_EQ(edges, row.edges);
  }
}

// A document with every kind of record that the model is made of.
std::string CompleteText() {
  return ProductText(100, "top", "#12,#60") + ProductText(200, "part", "#40,#41,#50,#53", 2) +
         UsageText(300, 100, 200) + PlacementText(310, 300, 205, 105, 12, 12) + UsageText(330, 100, 200) +
         // An edge in a face of a solid, and a free curve.
         PointText(20, "1.,0.,0.") + PointText(21, "0.,1.,0.") +
         "#22=VERTEX_POINT('',#11);\n#23=VERTEX_POINT('',#20);\n#24=DIRECTION('',(1.,0.,0.));\n#25=VECTOR('',#24,1.);\n"
         "#26=LINE('',#11,#25);\n#27=EDGE_CURVE('',#22,#23,#26,.T.);\n#28=ORIENTED_EDGE('',*,*,#27,.T.);\n"
         "#29=EDGE_LOOP('',(#28));\n#30=FACE_OUTER_BOUND('',#29,.T.);\n#31=PLANE('',#12);\n"
         "#32=ADVANCED_FACE('',(#30),#31,.T.);\n#33=CLOSED_SHELL('',(#32));\n#40=MANIFOLD_SOLID_BREP('',#33);\n"
         "#41=GEOMETRIC_CURVE_SET('',(#42,#44,#46));\n#42=TRIMMED_CURVE('',#43,(#20),(#21),.T.,.CARTESIAN.);\n"
         "#43=CIRCLE('',#12,1.);\n#44=COMPOSITE_CURVE('',(#45),.F.);\n"
         "#45=COMPOSITE_CURVE_SEGMENT(.CONTINUOUS.,.T.,#42);\n"
         "#46=B_SPLINE_CURVE_WITH_KNOTS('',1,(#11,#20,#21),.U.,.F.,.F.,(2,1,2),(0.,1.,2.),.U.);\n"
         // Tessellation.
         "#50=TESSELLATED_SOLID('',(#51),#40);\n#51=TRIANGULATED_FACE('',#52,3,((0.,0.,1.)),#32,(),((1,2,3)));\n"
         "#52=COORDINATES_LIST('',3,((0.,0.,0.),(1.,0.,0.),(0.,1.,0.)));\n"
         "#53=TESSELLATED_GEOMETRIC_SET('',(#54));\n#54=TESSELLATED_CURVE_SET('',#52,((1,2)));\n"
         // A mapped item with a scale.
         "#60=MAPPED_ITEM('',#61,#62);\n#61=REPRESENTATION_MAP(#12,#205);\n"
         "#62=CARTESIAN_TRANSFORMATION_OPERATOR_3D('',#24,$,#11,2.,$);\n"
         // Styles, layers and properties.
         "#70=STYLED_ITEM('',(#71),#40);\n#71=PRESENTATION_STYLE_ASSIGNMENT((#72));\n"
         "#72=SURFACE_STYLE_USAGE(.BOTH.,#73);\n#73=SURFACE_SIDE_STYLE('',(#74));\n#74=SURFACE_STYLE_FILL_AREA(#75);\n"
         "#75=FILL_AREA_STYLE('',(#76));\n#76=FILL_AREA_STYLE_COLOUR('',#77);\n#77=COLOUR_RGB('',1.,0.,0.);\n"
         "#78=OVER_RIDING_STYLED_ITEM('',(#71),#32,#70);\n#79=INVISIBILITY((#41));\n"
         "#80=PRESENTATION_LAYER_ASSIGNMENT('l','',(#40));\n#81=PROPERTY_DEFINITION('density','',#202);\n"
         "#82=PROPERTY_DEFINITION_REPRESENTATION(#81,#83);\n#83=REPRESENTATION('',(#84),#1);\n"
         "#84=MEASURE_REPRESENTATION_ITEM('d',LENGTH_MEASURE(1.),#3);\n"
         "#85=GENERAL_PROPERTY_ASSOCIATION('','',#86,#81);\n#86=GENERAL_PROPERTY('','g','');\n"
         // Annotations and views.
         "#90=ANNOTATION_CURVE_OCCURRENCE('',(#71),#91);\n#91=ANNOTATION_SYMBOL('',#92,#93);\n"
         "#92=SYMBOL_REPRESENTATION_MAP(#12,#94);\n#93=SYMBOL_TARGET('',#12,1.,1.);\n"
         "#94=SYMBOL_REPRESENTATION('',(#43),#1);\n#95=DRAUGHTING_CALLOUT('c',(#90));\n"
         "#96=ANNOTATION_PLANE('',(),#31,(#95));\n#97=DRAUGHTING_MODEL('',(#90,#96,#98),#1);\n"
         "#98=CAMERA_MODEL_D3('v',#12,$);\n#99=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#400,#97,#95);\n"
         "#400=DIMENSIONAL_SIZE(#401,'d');\n#401=SHAPE_ASPECT('','',#203,.T.);\n"
         "#402=DIMENSIONAL_CHARACTERISTIC_REPRESENTATION(#400,#403);\n"
         "#403=SHAPE_DIMENSION_REPRESENTATION('',(#84),#1);\n#404=FLATNESS_TOLERANCE('','',#7,#401);\n"
         "#405=DATUM('','',#203,.F.,'A');\n#406=TESSELLATED_ANNOTATION_OCCURRENCE('',(),#53);\n"
         "#407=MECHANICAL_DESIGN_AND_DRAUGHTING_RELATIONSHIP('','',#97,#205);\n"
         "#408=ANNOTATION_PLACEHOLDER_OCCURRENCE('',(),#409,.GPS_DATA.,0.);\n#409=GEOMETRIC_SET('',(#410));\n"
         "#410=PLANAR_BOX('',1.,1.,#12);\n";
}

// Indices are in range, and coordinates are finite.
void ExpectConsistent(ProductModel const& model) {
  auto const isIndex = [](int index, std::size_t size) { return index >= -1 && index < static_cast<int>(size); };
  auto const expectLines = [&](std::vector<ModelPolyline> const& polylines, std::vector<ModelMesh> const& meshes) {
    for (ModelPolyline const& each : polylines) {
      EXPECT_TRUE(isIndex(each.colour, model.colours.size()));
      EXPECT_GE(each.coordinates.size(), 6U);
      for (double const number : each.coordinates) EXPECT_TRUE(std::isfinite(number));
    }
    for (ModelMesh const& each : meshes) {
      EXPECT_TRUE(isIndex(each.colour, model.colours.size()));
      for (std::uint32_t const corner : each.triangles) EXPECT_LT(corner, each.points.size() / 3);
      EXPECT_TRUE(each.normals.empty() || each.normals.size() == each.points.size());
      for (double const number : each.points) EXPECT_TRUE(std::isfinite(number));
    }
  };
  for (ModelProduct const& each : model.products) {
    EXPECT_TRUE(isIndex(each.units, model.units.size()));
    for (int const index : each.colours) EXPECT_TRUE(index >= 0 && isIndex(index, model.colours.size()));
    for (int const index : each.occurrences) EXPECT_TRUE(index >= 0 && isIndex(index, model.occurrences.size()));
    expectLines(each.polylines, each.meshes);
  }
  for (ModelOccurrence const& each : model.occurrences) {
    EXPECT_TRUE(each.parent >= 0 && isIndex(each.parent, model.products.size()));
    EXPECT_TRUE(each.child >= 0 && isIndex(each.child, model.products.size()));
    EXPECT_TRUE(each.placement.IsFinite());
  }
  for (ModelAnnotation const& each : model.annotations) {
    EXPECT_TRUE(isIndex(each.product, model.products.size()));
    EXPECT_TRUE(!each.plane.has_value() || each.plane->IsFinite());
    expectLines(each.polylines, each.meshes);
  }
}

}  // namespace

TEST(StepModelReaderTest, ReadsCompleteDocument) {
  ReadModel const model(CompleteText(), true);
  EXPECT_EQ(model->warnings, std::vector<std::string>());
  EXPECT_EQ(model->products.size(), 2U);
  EXPECT_EQ(model->occurrences.size(), 2U);
  EXPECT_EQ(model->annotations.size(), 6U);
  ASSERT_EQ(model->products[1].polylines.size(), 2U);  // the free curves are invisible
  EXPECT_EQ(model->products[1].meshes.size(), 1U);
  ExpectConsistent(*model);
}

// Each reference in turn is replaced by one to nothing, by one of another type, by itself and by other values.
TEST(StepModelReaderTest, SurvivesWrongReferencesEverywhere) {
  std::string const text = kContexts + CompleteText();
  for (std::size_t at = text.find('#'); at != std::string::npos; at = text.find('#', at + 1)) {
    if (at == 0 || text[at - 1] == '\n') continue;
    std::size_t const end = text.find_first_not_of("0123456789", at + 1);
    std::size_t const line = text.rfind('\n', at) + 1;
    std::string const self = text.substr(line, text.find('=', line) - line);
    for (std::string const& value : {std::string("#99999"), std::string("#10"), self, std::string("1e308"),
                                     std::string("'x'"), std::string("(#11,(#11))"), std::string("$")}) {
      SCOPED_TRACE(text.substr(line, at - line) + value);
      ReadDocument document(DocumentText(text.substr(0, at) + value + text.substr(end)), "part.stp", false);
      Progress progress;
      ProductModel const* const model = document->GetModel(true, progress);
      ASSERT_NE(model, nullptr);
      ExpectConsistent(*model);
      if (value != "#99999") continue;
      std::string const beginning = self + ": attribute ";
      bool const isReported =
          std::any_of(model->warnings.begin(), model->warnings.end(), [&](std::string const& warning) {
            return warning.compare(0, beginning.size(), beginning) == 0 && warning.find("#99999") != std::string::npos;
          });
      EXPECT_TRUE(isReported);
    }
    if (testing::Test::HasFatalFailure()) return;
  }
}

// Numbers that no model has.
TEST(StepModelReaderTest, SurvivesAbsurdNumbersEverywhere) {
  std::string const text = kContexts + CompleteText();
  for (std::size_t at = text.find_first_of("0123456789"); at != std::string::npos;
       at = text.find_first_of("0123456789", at)) {
    std::size_t const end = text.find_first_not_of("0123456789.", at);
    bool const isNumber = text[at - 1] == ',' || text[at - 1] == '(';
    if (isNumber) {
      for (char const* value : {"1e308", "-1e308", "1e999", "0.", "-1", "99999999999999999999"}) {
        SCOPED_TRACE(text.substr(text.rfind('\n', at) + 1, 60) + " -> " + value);
        ReadDocument document(DocumentText(text.substr(0, at) + value + text.substr(end)), "part.stp", false);
        Progress progress;
        ProductModel const* const model = document->GetModel(true, progress);
        ASSERT_NE(model, nullptr);
        ExpectConsistent(*model);
      }
    }
    at = end;
  }
}

TEST(StepModelReaderTest, CountsCorpus) {
  ExpectCounts("VREL_CORPUS", {{"ATS10-out.stp", 1, 0, 0, 0, 1, 0, 0, 0, 0},
                               {"as1-oc-214.stp", 9, 13, 1, 0, 27, 0, 5, 53, 126},
                               {"dm1-id-214.stp", 7, 7, 0, 0, 23, 0, 3, 24, 51},
                               {"io1-cm-214.stp", 1, 0, 0, 9, 6, 0, 1, 29, 70}});
}

TEST(StepModelReaderTest, CountsModels) {
  ExpectCounts("VREL_MODELS", {{"annotated-assembly.stp", 4, 2, 0, 6, 4, 0, 0, 1, 4},
                               {"assembly-invisible.stp", 10, 14, 0, 0, 0, 0, 3, 19, 40},
                               {"attributes-layers.stp", 3, 2, 14, 0, 57, 0, 2, 11, 18},
                               {"overriding-styles.stp", 1, 0, 1, 0, 0, 0, 1, 6, 12},
                               {"spheres-layers.stp", 2, 2, 3, 0, 0, 0, 1, 1, 0},
                               {"tessellated-mapped.stp", 3, 2, 0, 0, 0, 0, 0, 1, 0},
                               {"tessellated-solid.stp", 1, 0, 0, 0, 0, 0, 1, 4, 0},
                               {"tessellated-styled.stp", 2, 1, 0, 0, 0, 0, 1, 6, 0},
                               {"mapped-annotations.stp", 1, 0, 1, 9, 0, 3, 0, 0, 0},
                               {"validation-properties.stp", 1, 0, 0, 6, 12, 0, 1, 7, 15}});
}

// The leaders of annotated-assembly.stp are the polylines #200 and #1800; the curves of mapped-annotations.stp are the
// trimmed lines #155, #166 and #176. The drawing view "TOP VIEW" shows them and the text #150.
TEST(StepModelReaderTest, ReadsAnnotationCurvesOfModels) {
  char const* const folder = std::getenv("VREL_MODELS");
  if (folder == nullptr) GTEST_SKIP() << "set VREL_MODELS to a folder of STEP files to run this test";
  struct Row {
    char const* file;
    std::vector<std::string> curves;
    std::size_t texts, views;
  };
  std::vector<Row> const rows = {{"annotated-assembly.stp", {"#200", "#1800"}, 2, 0},
                                 {"mapped-annotations.stp", {"#155", "#166", "#176"}, 4, 4}};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.file);
    ReadDocument document(FileText(std::string(folder) + "/" + row.file), row.file, false);
    Progress progress;
    ProductModel const* const model = document->GetModel(true, progress);
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(model->warnings, std::vector<std::string>());
    std::vector<std::string> curves;
    std::size_t texts = 0;
    std::size_t views = 0;
    for (ModelAnnotation const& each : model->annotations) {
      for (ModelPolyline const& polyline : each.polylines) curves.push_back(polyline.instance);
      if (each.value.has_value()) ++texts;
      if (each.view == "TOP VIEW") ++views;
    }
    EXPECT_EQ(curves, row.curves);
    EXPECT_EQ(texts, row.texts);
    EXPECT_EQ(views, row.views);
  }
}
