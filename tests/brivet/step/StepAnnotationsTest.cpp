#include "StepAnnotations.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "ModelFixture.h"

namespace {

// A product of base 100 whose shape is a line from (0, 0, 0) to (100, 0, 0).
std::string PartText() {
  return ProductText(100, "a", "#110") + "#110=GEOMETRIC_CURVE_SET('',(#111));\n#111=POLYLINE('',(#11,#112));\n" +
         PointText(112, "100.,0.,0.");
}

// The points of a triangle and the polyline #24 through them: (1, 2, 3), (4, 2, 3), (4, 6, 3).
std::string TriangleText() {
  return PointText(21, "1.,2.,3.") + PointText(22, "4.,2.,3.") + PointText(23, "4.,6.,3.") +
         "#24=POLYLINE('',(#21,#22,#23));\n";
}

std::vector<double> const kTriangle{1, 2, 3, 4, 2, 3, 4, 6, 3};

void ExpectCoordinates(std::vector<double> const& found, std::vector<double> const& expected) {
  ASSERT_EQ(found.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_NEAR(found[i], expected[i], 1e-9) << i;
}

}  // namespace

TEST(StepAnnotationsTest, ReadsPolylines) {
  ReadModel const model(PartText() + TriangleText() +
                            "#30=ANNOTATION_CURVE_OCCURRENCE('leader',(#31),#34);\n"
                            "#31=PRESENTATION_STYLE_ASSIGNMENT((#32));\n#32=CURVE_STYLE('',$,$,#33);\n"
                            "#33=COLOUR_RGB('',1.,0.,0.);\n#34=GEOMETRIC_CURVE_SET('',(#24,#35));\n"
                            "#35=POLYLINE('',(#23,#21));\n#36=DRAUGHTING_MODEL('',(#30),#1);\n",
                        true);
  ASSERT_EQ(model->annotations.size(), 1U);
  ModelAnnotation const& annotation = model->annotations[0];
  EXPECT_EQ(annotation.product, 0);
  EXPECT_EQ(annotation.plane, std::nullopt);
  ASSERT_EQ(annotation.polylines.size(), 2U);
  EXPECT_EQ(annotation.polylines[0].instance, "#24");
  EXPECT_EQ(annotation.polylines[0].coordinates, kTriangle);
  EXPECT_EQ(annotation.polylines[1].coordinates, (std::vector<double>{4, 6, 3, 1, 2, 3}));
  ASSERT_GE(annotation.polylines[0].colour, 0);
  ModelColourUse const& use = model->colours[static_cast<std::size_t>(annotation.polylines[0].colour)];
  EXPECT_EQ(use.colour.Hexadecimal(), "#ff0000");
  EXPECT_EQ(use.items, 0);
}

TEST(StepAnnotationsTest, MakesNoPolylinesWithoutGeometry) {
  ReadModel const model(PartText() + TriangleText() + "#30=ANNOTATION_CURVE_OCCURRENCE('',(),#24);\n");
  ASSERT_EQ(model->annotations.size(), 1U);
  EXPECT_TRUE(model->annotations[0].polylines.empty());
  EXPECT_TRUE(model->colours.empty());
}

// A full circle of radius 2 with a chord error of a thousandth of its box's diagonal, which is 4 * sqrt(2).
TEST(StepAnnotationsTest, SamplesCurvesToOwnSize) {
  ReadModel const model(PartText() +
                            "#30=ANNOTATION_OCCURRENCE('',(),#31);\n#31=GEOMETRIC_SET('',(#32,#11));\n"
                            "#32=COMPOSITE_CURVE('',(#33),.F.);\n"
                            "#33=COMPOSITE_CURVE_SEGMENT(.CONTINUOUS.,.T.,#34);\n#34=CIRCLE('',#12,2.);\n",
                        true);
  ASSERT_EQ(model->annotations.size(), 1U);
  ASSERT_EQ(model->annotations[0].polylines.size(), 1U);
  std::vector<double> const& points = model->annotations[0].polylines[0].coordinates;
  double const chordError = 0.001 * 4.0 * std::sqrt(2.0);
  for (std::size_t i = 0; i + 6 <= points.size(); i += 3) {
    EXPECT_NEAR(std::hypot(points[i], points[i + 1]), 2.0, 1e-12);
    double const middle = std::hypot(points[i] + points[i + 3], points[i + 1] + points[i + 4]) / 2.0;
    EXPECT_GE(middle, 2.0 - chordError);
  }
}

TEST(StepAnnotationsTest, PlacesMappedSymbols) {
  // The symbol is scaled by 2 and 3 and moved to (10, 0, 0).
  ReadModel const model(PartText() + TriangleText() +
                            "#30=ANNOTATION_SYMBOL_OCCURRENCE('',(),#31);\n#31=ANNOTATION_SYMBOL('',#32,#33);\n"
                            "#32=SYMBOL_REPRESENTATION_MAP(#12,#34);\n#33=SYMBOL_TARGET('',#35,2.,3.);\n"
                            "#34=SYMBOL_REPRESENTATION('',(#24),#1);\n#35=AXIS2_PLACEMENT_3D('',#36,$,$);\n" +
                            PointText(36, "10.,0.,0."),
                        true);
  ASSERT_EQ(model->annotations.size(), 1U);
  ASSERT_EQ(model->annotations[0].polylines.size(), 1U);
  ExpectCoordinates(model->annotations[0].polylines[0].coordinates, {12, 6, 3, 18, 6, 3, 18, 18, 3});
  EXPECT_TRUE(model->warnings.empty());
}

TEST(StepAnnotationsTest, PlacesMappedItems) {
  // A text of one character whose glyph is turned by 90 degrees: x becomes y.
  ReadModel const model(PartText() + TriangleText() +
                            "#30=ANNOTATION_TEXT_OCCURRENCE('',(),#31);\n#31=ANNOTATION_TEXT('',#32,#35);\n"
                            "#32=REPRESENTATION_MAP(#12,#33);\n#33=TEXT_STRING_REPRESENTATION('',(#37),#1);\n"
                            "#35=AXIS2_PLACEMENT_3D('',#11,$,#36);\n#36=DIRECTION('',(0.,1.,0.));\n"
                            "#37=ANNOTATION_TEXT_CHARACTER('',#38,#12,'left');\n#38=REPRESENTATION_MAP(#12,#39);\n"
                            "#39=CHARACTER_GLYPH_SYMBOL('',(#24),#1,#40,0.);\n#40=PLANAR_EXTENT('',1.,1.);\n",
                        true);
  ASSERT_EQ(model->annotations.size(), 1U);
  EXPECT_EQ(model->annotations[0].kind, ModelAnnotation::Note);
  ASSERT_EQ(model->annotations[0].polylines.size(), 1U);
  ExpectCoordinates(model->annotations[0].polylines[0].coordinates, {-2, 1, 3, -2, 4, 3, -6, 4, 3});
}

TEST(StepAnnotationsTest, ReadsFilledAreasAndRectangles) {
  ReadModel const model(PartText() + TriangleText() +
                            "#30=ANNOTATION_FILL_AREA_OCCURRENCE('',(),#31,#21);\n"
                            "#31=ANNOTATION_FILL_AREA('',(#24));\n"
                            "#40=ANNOTATION_PLACEHOLDER_OCCURRENCE('p',(),#41,.GPS_DATA.,1.);\n"
                            "#41=GEOMETRIC_SET('',(#42,#21));\n#42=PLANAR_BOX('',4.,5.,#43);\n"
                            "#43=AXIS2_PLACEMENT_3D('',#21,$,$);\n"
                            "#50=ANNOTATION_PLACEHOLDER_OCCURRENCE_WITH_LEADER_LINE('q',(),#51,.GPS_DATA.,1.,(#52));\n"
                            "#51=GEOMETRIC_SET('',(#21));\n#52=ANNOTATION_TO_MODEL_LEADER_LINE('',(#24));\n",
                        true);
  ASSERT_EQ(model->annotations.size(), 3U);
  ASSERT_EQ(model->annotations[0].polylines.size(), 1U);
  EXPECT_EQ(model->annotations[0].polylines[0].coordinates, kTriangle);
  EXPECT_EQ(model->annotations[1].kind, ModelAnnotation::Placeholder);
  ASSERT_EQ(model->annotations[1].polylines.size(), 1U);
  EXPECT_EQ(model->annotations[1].polylines[0].coordinates,
            (std::vector<double>{1, 2, 3, 5, 2, 3, 5, 7, 3, 1, 7, 3, 1, 2, 3}));
  ASSERT_EQ(model->annotations[2].polylines.size(), 1U);
  EXPECT_EQ(model->annotations[2].polylines[0].coordinates, kTriangle);
}

TEST(StepAnnotationsTest, ReadsTessellation) {
  ReadModel const model(
      PartText() +
          "#30=TESSELLATED_ANNOTATION_OCCURRENCE('t',(),#31);\n"
          "#31=TESSELLATED_GEOMETRIC_SET('',(#32,#33));\n#32=TESSELLATED_CURVE_SET('',#34,((1,2),(2,3)));\n"
          "#33=TRIANGULATED_SURFACE_SET('',#34,3,((0.,0.,2.)),(),((1,2,3)));\n"
          "#34=COORDINATES_LIST('',3,((0.,0.,0.),(1.,0.,0.),(0.,1.,0.)));\n",
      true);
  ASSERT_EQ(model->annotations.size(), 1U);
  ModelAnnotation const& annotation = model->annotations[0];
  EXPECT_EQ(annotation.form, ModelAnnotation::Tessellated);
  ASSERT_EQ(annotation.polylines.size(), 2U);
  EXPECT_EQ(annotation.polylines[1].coordinates, (std::vector<double>{1, 0, 0, 0, 1, 0}));
  ASSERT_EQ(annotation.meshes.size(), 1U);
  EXPECT_EQ(annotation.meshes[0].points, (std::vector<double>{0, 0, 0, 1, 0, 0, 0, 1, 0}));
  EXPECT_EQ(annotation.meshes[0].triangles, (std::vector<std::uint32_t>{0, 1, 2}));
  EXPECT_EQ(annotation.meshes[0].normals, (std::vector<double>{0, 0, 1, 0, 0, 1, 0, 0, 1}));
}

TEST(StepAnnotationsTest, SkipsInvisible) {
  ReadModel const model(PartText() + TriangleText() +
                            "#30=ANNOTATION_CURVE_OCCURRENCE('',(),#24);\n#31=INVISIBILITY((#30));\n"
                            "#32=ANNOTATION_CURVE_OCCURRENCE('',(),#33);\n#33=POLYLINE('',(#21,#22));\n"
                            "#34=DRAUGHTING_CALLOUT('',(#32));\n#35=INVISIBILITY((#34));\n",
                        true);
  ASSERT_EQ(model->annotations.size(), 2U);
  EXPECT_TRUE(model->annotations[0].polylines.empty());
  EXPECT_TRUE(model->annotations[1].polylines.empty());
}

TEST(StepAnnotationsTest, ReadsPlanes) {
  ReadModel const model(PartText() + TriangleText() +
                        "#30=ANNOTATION_CURVE_OCCURRENCE('',(),#24);\n#31=DRAUGHTING_CALLOUT('c',(#30));\n"
                        "#32=ANNOTATION_PLANE('',(),#33,(#31));\n#33=PLANE('',#34);\n"
                        "#34=AXIS2_PLACEMENT_3D('',#21,#35,#36);\n#35=DIRECTION('',(1.,0.,0.));\n"
                        "#36=DIRECTION('',(0.,1.,0.));\n#37=CAMERA_MODEL_D3('iso',#12,$);\n"
                        "#38=DRAUGHTING_MODEL('',(#32,#37),#1);\n");
  ASSERT_EQ(model->annotations.size(), 1U);
  ASSERT_TRUE(model->annotations[0].plane.has_value());
  // x of the plane is y, y is z, and its normal is x.
  EXPECT_EQ(model->annotations[0].plane->Numbers(), (std::array<double, 12>{0, 0, 1, 1, 1, 0, 0, 2, 0, 1, 0, 3}));
  EXPECT_EQ(model->annotations[0].view, "iso");
}

// The draughting model is in inches, its product in millimetres.
TEST(StepAnnotationsTest, ConvertsUnits) {
  ReadModel const model(PartText() + TriangleText() +
                            "#30=ANNOTATION_CURVE_OCCURRENCE('',(),#24);\n#31=DRAUGHTING_MODEL('',(#30),#2);\n"
                            "#32=MECHANICAL_DESIGN_AND_DRAUGHTING_RELATIONSHIP('','',#31,#105);\n",
                        true);
  ASSERT_EQ(model->annotations.size(), 1U);
  ASSERT_EQ(model->annotations[0].polylines.size(), 1U);
  ExpectCoordinates(model->annotations[0].polylines[0].coordinates,
                    {25.4, 50.8, 76.2, 101.6, 50.8, 76.2, 101.6, 152.4, 76.2});
  // Only contexts of shapes are listed.
  EXPECT_EQ(model->units.size(), 1U);
}

TEST(StepAnnotationsTest, FindsProduct) {
  std::string const parts = ProductText(100, "a", "") + ProductText(200, "b", "") + TriangleText();
  std::string const occurrence = "#30=ANNOTATION_CURVE_OCCURRENCE('',(),#24);\n";
  auto const productOf = [&](std::string const& text) {
    ReadModel const model(parts + occurrence + text);
    return model->annotations.empty() ? -2 : model->annotations[0].product;
  };
  EXPECT_EQ(productOf(""), 0);
  EXPECT_EQ(productOf("#31=DRAUGHTING_MODEL('',(#30),#2);\n"
                      "#32=REPRESENTATION_RELATIONSHIP('','',#31,#205);\n"),
            1);
  EXPECT_EQ(productOf("#31=DRAUGHTING_MODEL('',(#30),#2);\n#32=PROPERTY_DEFINITION_REPRESENTATION(#203,#31);\n"), 1);
  EXPECT_EQ(productOf("#31=SHAPE_REPRESENTATION('',(#30),#2);\n#32=SHAPE_DEFINITION_REPRESENTATION(#33,#31);\n"
                      "#33=PROPERTY_DEFINITION('','',#34);\n#34=SHAPE_ASPECT('','',#203,.T.);\n"),
            1);
  EXPECT_EQ(productOf("#31=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#32,#33,#30);\n"
                      "#32=DIMENSIONAL_SIZE(#34,'');\n#33=DRAUGHTING_MODEL('',(#30),#1);\n"
                      "#34=SHAPE_ASPECT('','',#203,.T.);\n"),
            1);
  // Both products share the context.
  EXPECT_EQ(productOf("#31=DRAUGHTING_MODEL('',(#30),#1);\n"), 0);
  ReadModel const shared(ProductText(100, "a", "") + ProductText(200, "b", "", 2) + TriangleText() + occurrence +
                         "#31=DRAUGHTING_MODEL('',(#30),#2);\n");
  EXPECT_EQ(shared->annotations[0].product, 1);
}

TEST(StepAnnotationsTest, PlacesMappedDraughtingModels) {
  ReadModel const model(PartText() + TriangleText() +
                            "#30=ANNOTATION_CURVE_OCCURRENCE('',(),#24);\n#31=DRAUGHTING_MODEL('',(#30),#1);\n"
                            "#32=DRAUGHTING_MODEL('',(#33,#39),#1);\n#33=MAPPED_ITEM('',#34,#35);\n"
                            "#34=REPRESENTATION_MAP(#12,#31);\n#35=AXIS2_PLACEMENT_3D('',#21,$,$);\n"
                            "#36=REPRESENTATION_RELATIONSHIP('','',#32,#105);\n#39=CAMERA_MODEL_D3('v',#12,$);\n",
                        true);
  ASSERT_EQ(model->annotations.size(), 1U);
  ASSERT_EQ(model->annotations[0].polylines.size(), 1U);
  ExpectCoordinates(model->annotations[0].polylines[0].coordinates, {2, 4, 6, 5, 4, 6, 5, 8, 6});
  EXPECT_EQ(model->annotations[0].view, "v");
}

TEST(StepAnnotationsTest, ReadsTexts) {
  ReadModel const model(
      "#20=ANNOTATION_TEXT_OCCURRENCE('',(),#21);\n#21=COMPOSITE_TEXT('',(#22,#23));\n"
      "#22=TEXT_LITERAL('','two',#12,'baseline left',.RIGHT.,$);\n"
      "#23=TEXT_LITERAL_WITH_EXTENT('','lines',#12,'baseline left',.RIGHT.,$,$);\n");
  ASSERT_EQ(model->annotations.size(), 1U);
  EXPECT_EQ(model->annotations[0].kind, ModelAnnotation::Note);
  EXPECT_EQ(model->annotations[0].value, "two\nlines");
}

TEST(StepAnnotationsTest, DeterminesKinds) {
  struct Row {
    char const* meaning;
    ModelAnnotation::Kind kind;
  };
  static constexpr Row kRows[] = {{"DIMENSIONAL_SIZE(#40,'')", ModelAnnotation::Dimension},
                                  {"ANGULAR_SIZE(#40,'',.SMALL.)", ModelAnnotation::Dimension},
                                  {"DIMENSIONAL_LOCATION('','',#40,#40)", ModelAnnotation::Dimension},
                                  {"POSITION_TOLERANCE('','',$,#40)", ModelAnnotation::Tolerance},
                                  {"DATUM('','',$,.F.,'A')", ModelAnnotation::Datum},
                                  {"DATUM_FEATURE('','',$,.T.)", ModelAnnotation::Datum},
                                  {"PLACED_DATUM_TARGET_FEATURE('','',$,.T.,'1')", ModelAnnotation::Datum},
                                  {"SHAPE_ASPECT('','',$,.T.)", ModelAnnotation::Other}};
  for (Row const& row : kRows) {
    SCOPED_TRACE(row.meaning);
    ReadModel const model("#20=ANNOTATION_OCCURRENCE('',(),#11);\n#21=" + std::string(row.meaning) +
                          ";\n#22=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#21,$,#20);\n"
                          "#40=SHAPE_ASPECT('','',$,.T.);\n");
    ASSERT_FALSE(model->annotations.empty());
    EXPECT_EQ(model->annotations[0].kind, row.kind);
  }
}

TEST(StepAnnotationsTest, SurvivesCyclesAndWrongTypes) {
  ReadModel const model(PartText() +
                            "#20=ANNOTATION_OCCURRENCE('',(#20),#20);\n#21=GEOMETRIC_SET('',(#21,#22,#999,1.));\n"
                            "#22=ANNOTATION_OCCURRENCE('',(),#21);\n#23=COMPOSITE_TEXT('',(#23));\n"
                            "#24=ANNOTATION_TEXT_OCCURRENCE('',(),#23);\n#25=DRAUGHTING_CALLOUT('',(#25,#26,$));\n"
                            "#26=ANNOTATION_OCCURRENCE('',(),#27);\n#27=MAPPED_ITEM('',#28,#12);\n"
                            "#28=REPRESENTATION_MAP(#12,#29);\n#29=DRAUGHTING_MODEL('',(#27,#26),#1);\n"
                            "#30=ANNOTATION_PLANE('',(),#11,(#30,#26));\n"
                            "#31=ANNOTATION_FILL_AREA_OCCURRENCE('',(),#12,$);\n"
                            "#32=CAMERA_USAGE(#33,#29);\n#33=CAMERA_MODEL_D3('',#33,#33);\n"
                            "#34=TESSELLATED_ANNOTATION_OCCURRENCE('',(),#35);\n"
                            "#35=TESSELLATED_GEOMETRIC_SET('',(#35,#11));\n",
                        true);
  EXPECT_EQ(model->annotations.size(), 6U);
  for (ModelAnnotation const& each : model->annotations) EXPECT_TRUE(each.polylines.empty()) << each.instance;
}

TEST(StepAnnotationsTest, ReadsSemanticAnnotations) {
  ReadModel const model(
      "#20=DIMENSIONAL_SIZE(#30,'diameter');\n#21=DIMENSIONAL_CHARACTERISTIC_REPRESENTATION(#20,#22);\n"
      "#22=SHAPE_DIMENSION_REPRESENTATION('',(#23),#1);\n"
      "#23=(LENGTH_MEASURE_WITH_UNIT()MEASURE_REPRESENTATION_ITEM()MEASURE_WITH_UNIT(LENGTH_MEASURE(8.5),#3)"
      "REPRESENTATION_ITEM('nominal value'));\n"
      "#24=FLATNESS_TOLERANCE('flat','',#25,#30);\n#25=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(0.1),#3);\n"
      "#26=DATUM('','',$,.F.,'A');\n#30=SHAPE_ASPECT('','',$,.T.);\n");
  ASSERT_EQ(model->annotations.size(), 3U);
  EXPECT_EQ(model->annotations[0].kind, ModelAnnotation::Dimension);
  EXPECT_EQ(model->annotations[0].name, "diameter");
  EXPECT_EQ(model->annotations[0].value, "8.5 millimetre");
  EXPECT_EQ(model->annotations[0].form, ModelAnnotation::Semantic);
  EXPECT_EQ(model->annotations[1].kind, ModelAnnotation::Tolerance);
  EXPECT_EQ(model->annotations[1].value, "0.1 millimetre");
  EXPECT_EQ(model->annotations[2].kind, ModelAnnotation::Datum);
  EXPECT_EQ(model->annotations[2].name, "A");
}

TEST(StepAnnotationsTest, ReadsGraphicAnnotationsWithViews) {
  ReadModel const model(
      "#20=CAMERA_MODEL_D3('front',#12,#21);\n#21=VIEW_VOLUME(.PARALLEL.,#11,1.,0.,.F.,0.,.F.,.F.,#22);\n"
      "#23=CAMERA_MODEL_D3('free',#12,#21);\n#24=DRAUGHTING_MODEL('',(#20,#25,#28),#1);\n"
      "#25=ANNOTATION_CURVE_OCCURRENCE('',(),#26);\n#26=POLYLINE('',(#11,#11));\n"
      "#27=DRAUGHTING_CALLOUT('callout',(#25));\n#28=TESSELLATED_ANNOTATION_OCCURRENCE('t',(),#26);\n"
      "#29=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#30,#24,#27);\n#30=DIMENSIONAL_SIZE($,'d');\n");
  ASSERT_EQ(model->views.size(), 2U);
  EXPECT_EQ(model->views[0].name, "front");
  EXPECT_EQ(model->views[0].kind, ModelView::Saved);
  EXPECT_EQ(model->views[1].kind, ModelView::Camera);
  ASSERT_EQ(model->annotations.size(), 3U);
  EXPECT_EQ(model->annotations[0].name, "callout");
  EXPECT_EQ(model->annotations[0].kind, ModelAnnotation::Dimension);
  EXPECT_EQ(model->annotations[0].form, ModelAnnotation::Polyline);
  EXPECT_EQ(model->annotations[0].view, "front");
  EXPECT_EQ(model->annotations[1].form, ModelAnnotation::Tessellated);
  EXPECT_EQ(model->annotations[1].name, "t");
  EXPECT_EQ(model->annotations[1].view, "front");
}

// The view reference system is at (10, 0, 0) and looks along -x; up is z. Its window is 4 by 2, in inches.
TEST(StepAnnotationsTest, ReadsCameras) {
  ReadModel const model(
      ProductText(100, "a", "") + "#20=CAMERA_MODEL_D3('v',#21,#25);\n#21=AXIS2_PLACEMENT_3D('',#22,#23,#24);\n" +
      PointText(22, "10.,0.,0.") + "#23=DIRECTION('',(1.,0.,0.));\n#24=DIRECTION('',(0.,1.,0.));\n" +
      "#25=VIEW_VOLUME(.CENTRAL.,#26,1.,0.,.F.,0.,.F.,.F.,#27);\n" + PointText(26, "0.,0.,5.") +
      "#27=PLANAR_BOX('',4.,2.,#28);\n#28=AXIS2_PLACEMENT_2D('',#29,$);\n" + PointText(29, "-2.,-1.") +
      "#30=DRAUGHTING_MODEL('',(#20),#2);\n#31=REPRESENTATION_RELATIONSHIP('','',#30,#105);\n"
      "#40=CAMERA_MODEL_D3('w',#41,$);\n#41=AXIS2_PLACEMENT_3D('',#22,$,$);\n");
  ASSERT_EQ(model->views.size(), 2U);
  EXPECT_EQ(model->views[0].product, 0);
  ASSERT_TRUE(model->views[0].camera.has_value());
  ModelCamera const& camera = *model->views[0].camera;
  EXPECT_TRUE(camera.isPerspective);
  EXPECT_NEAR(camera.eye[0], 15 * 25.4, 1e-9);
  EXPECT_NEAR(camera.target[0], 11 * 25.4, 1e-9);
  EXPECT_NEAR(camera.target[1], 0.0, 1e-9);
  EXPECT_NEAR(camera.target[2], 0.0, 1e-9);
  EXPECT_NEAR(camera.up[2], 1.0, 1e-12);
  EXPECT_NEAR(camera.width, 4 * 25.4, 1e-9);
  EXPECT_NEAR(camera.height, 2 * 25.4, 1e-9);
  EXPECT_FALSE(model->views[1].camera.has_value());
  EXPECT_EQ(model->warnings, std::vector<std::string>());
}

TEST(StepAnnotationsTest, ReadsComplexInstances) {
  ReadModel const model(
      PartText() + TriangleText() +
          "#30=(ANNOTATION_CURVE_OCCURRENCE()ANNOTATION_OCCURRENCE()DRAUGHTING_ANNOTATION_OCCURRENCE()"
          "GEOMETRIC_REPRESENTATION_ITEM()REPRESENTATION_ITEM('leader')STYLED_ITEM((),#24));\n"
          "#31=(CHARACTERIZED_OBJECT('','')CHARACTERIZED_REPRESENTATION()DRAUGHTING_MODEL()"
          "REPRESENTATION('',(#30,#32),#1));\n#32=CAMERA_MODEL_D3('v',#12,$);\n",
      true);
  ASSERT_EQ(model->annotations.size(), 1U);
  EXPECT_EQ(model->annotations[0].name, "leader");
  EXPECT_EQ(model->annotations[0].view, "v");
  ASSERT_EQ(model->annotations[0].polylines.size(), 1U);
  EXPECT_EQ(model->annotations[0].polylines[0].coordinates, kTriangle);
}

// A text that contains itself does not use up the steps of the annotations after it.
TEST(StepAnnotationsTest, TextThatContainsItselfEnds) {
  std::string data = PartText() + TriangleText() + "#30=COMPOSITE_TEXT('',(#30,#30,#30));\n";
  for (int i = 0; i < 200; ++i) data += "#" + std::to_string(1000 + i) + "=ANNOTATION_TEXT_OCCURRENCE('',(),#30);\n";
  ReadModel const model(data + "#2000=ANNOTATION_CURVE_OCCURRENCE('',(),#24);\n");
  ASSERT_EQ(model->annotations.size(), 201U);
  EXPECT_EQ(model->annotations[0].value, std::nullopt);
  EXPECT_TRUE(model->warnings.empty());
}
