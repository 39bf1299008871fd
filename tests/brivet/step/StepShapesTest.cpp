#include "StepShapes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "ModelFixture.h"

namespace {

// The instance "#ID=RECORD;".
std::string InstanceText(int id, std::string const& record) {
  return "#" + std::to_string(id) + "=" + record + ";\n";
}

std::string VertexText(int id, int point) {
  return InstanceText(id, "VERTEX_POINT('',#" + std::to_string(point) + ")");
}

// An edge #40 + i between two vertices on the line #32, and the oriented edge #50 + i.
std::string EdgeText(int i, int from, int to) {
  return InstanceText(40 + i, "EDGE_CURVE('',#" + std::to_string(from) + ",#" + std::to_string(to) + ",#32,.T.)") +
         InstanceText(50 + i, "ORIENTED_EDGE('',*,*,#" + std::to_string(40 + i) + ",.T.)");
}

// A colour #80 + i, its style in three instances from #90 + 4 * i on, and the item that has it.
std::string StyleText(int i, std::string const& colour, int item) {
  int const first = 90 + 4 * i;
  return InstanceText(80 + i, "COLOUR_RGB(''," + colour + ")") +
         InstanceText(first, "CURVE_STYLE('',$,$,#" + std::to_string(80 + i) + ")") +
         InstanceText(first + 1, "PRESENTATION_STYLE_ASSIGNMENT((#" + std::to_string(first) + "))") +
         InstanceText(first + 2, "STYLED_ITEM('',(#" + std::to_string(first + 1) + "),#" + std::to_string(item) + ")");
}

// A face with the straight edges between four points #21, #23, #25, #27 of the plane z = 0: a rectangle of 4 by 3.
std::string RectangleText() {
  std::string data =
      PointText(21, "0.,0.,0.") + PointText(23, "4.,0.,0.") + PointText(25, "4.,3.,0.") + PointText(27, "0.,3.,0.");
  for (int i = 22; i <= 28; i += 2) data += VertexText(i, i - 1);
  data += "#30=DIRECTION('',(1.,0.,0.));\n#31=VECTOR('',#30,1.);\n#32=LINE('',#21,#31);\n";
  for (int i = 0; i < 4; ++i) data += EdgeText(i, 22 + 2 * i, 22 + 2 * ((i + 1) % 4));
  return data +
         "#60=EDGE_LOOP('',(#50,#51,#52,#53));\n#61=FACE_OUTER_BOUND('',#60,.T.);\n"
         "#62=ADVANCED_FACE('',(#61),#63,.T.);\n#63=PLANE('',#12);\n";
}

// Coordinates of a unit tetrahedron, #20.
constexpr char kTetrahedron[] = "#20=COORDINATES_LIST('',4,((0.,0.,0.),(1.,0.,0.),(0.,1.,0.),(0.,0.,1.)));\n";

}  // namespace

TEST(StepShapesTest, CountsSolid) {
  ReadModel const model(RectangleText() + "#70=CLOSED_SHELL('',(#62));\n#71=MANIFOLD_SOLID_BREP('',#70);\n" +
                        ProductText(100, "a", "#12,#71"));
  ModelProduct const& product = model->products[0];
  EXPECT_EQ(model->warnings, std::vector<std::string>());
  EXPECT_EQ(product.solids, 1);
  EXPECT_EQ(product.shells, 1);
  EXPECT_EQ(product.faces, 1);
  EXPECT_EQ(product.edges, 4);
  EXPECT_TRUE(product.polylines.empty());
  ExpectBox(product.extent, {0, 0, 0, 4, 3, 0});
}

TEST(StepShapesTest, CountsSharedItemsOnce) {
  ReadModel const model(RectangleText() +
                        "#70=CLOSED_SHELL('',(#62,#62));\n#71=ORIENTED_CLOSED_SHELL('',*,#70,.F.);\n"
                        "#72=BREP_WITH_VOIDS('',#70,(#71));\n#73=SHELL_BASED_SURFACE_MODEL('',(#70));\n" +
                        ProductText(100, "a", "#72,#73,#72"));
  EXPECT_EQ(model->products[0].solids, 1);
  EXPECT_EQ(model->products[0].shells, 1);
  EXPECT_EQ(model->products[0].faces, 1);
  EXPECT_EQ(model->products[0].edges, 4);
}

// A quarter of a circle of radius 2 around (5,0,0), from (7,0,0) to (5,2,0); and the other three quarters.
TEST(StepShapesTest, ExtentOfArcIsExact) {
  std::string const data = PointText(20, "5.,0.,0.") + "#21=AXIS2_PLACEMENT_3D('',#20,$,$);\n#22=CIRCLE('',#21,2.);\n" +
                           PointText(23, "7.,0.,0.") + PointText(24, "5.,2.,0.") +
                           "#25=VERTEX_POINT('',#23);\n#26=VERTEX_POINT('',#24);\n"
                           "#30=CONNECTED_EDGE_SET('',(#31));\n#32=EDGE_BASED_WIREFRAME_MODEL('',(#30));\n";
  ReadModel const quarter(data + "#31=EDGE_CURVE('',#25,#26,#22,.T.);\n" + ProductText(100, "a", "#32"));
  ExpectBox(quarter->extent, {5, 0, 0, 7, 2, 0});
  ReadModel const rest(data + "#31=EDGE_CURVE('',#25,#26,#22,.F.);\n" + ProductText(100, "a", "#32"));
  ExpectBox(rest->extent, {3, -2, 0, 7, 2, 0});
  ReadModel const whole(data + "#31=EDGE_CURVE('',#25,#25,#22,.T.);\n" + ProductText(100, "a", "#32"));
  ExpectBox(whole->extent, {3, -2, 0, 7, 2, 0});
}

// A quadratic B-spline from (0,0,0) to (4,0,0) with the control point (2,y,0) between, as the item #80. It rises to
// half of y, or for the weights 1, w, 1 to y w / (1 + w).
std::string SplineText(double y, std::string const& weights = "") {
  std::string const points = PointText(81, "0.,0.,0.") + PointText(82, "2.," + std::to_string(y) + ",0.") +
                             PointText(83, "4.,0.,0.") + "#84=GEOMETRIC_CURVE_SET('',(#80));\n";
  std::string const values = "2,(#81,#82,#83),.UNSPECIFIED.,.F.,.F.";
  if (weights.empty())
    return points + "#80=B_SPLINE_CURVE_WITH_KNOTS(''," + values + ",(3,3),(0.,1.),.UNSPECIFIED.);\n";
  return points + "#80=(BOUNDED_CURVE()B_SPLINE_CURVE(" + values +
         ")B_SPLINE_CURVE_WITH_KNOTS((3,3),(0.,1.),.UNSPECIFIED.)CURVE()GEOMETRIC_REPRESENTATION_ITEM()"
         "RATIONAL_B_SPLINE_CURVE((" +
         weights + "))REPRESENTATION_ITEM(''));\n";
}

TEST(StepShapesTest, ExtentOfSplinesIsThatOfTheirPoints) {
  struct Case {
    double y;
    char const* weights;
    double alone;
    double withRectangle;  // of 4 by 3, which is before and after the curve
  };
  for (Case const& each :
       {Case{2.0, "", 1.0, 3.0}, Case{3.0, "", 1.5, 3.0}, Case{4.0, "", 2.0, 3.0}, Case{8.0, "", 4.0, 4.0},
        Case{4.0, "1.,3.,1.", 3.0, 3.0}, Case{8.0, "1.,3.,1.", 6.0, 6.0}, Case{2.0, "1.,3.,1.", 1.5, 3.0}}) {
    std::string const data = RectangleText() + "#70=OPEN_SHELL('',(#62));\n#71=SHELL_BASED_SURFACE_MODEL('',(#70));\n" +
                             SplineText(each.y, each.weights);
    ReadModel const alone(data + ProductText(100, "a", "#12,#84"));
    EXPECT_NEAR(alone->extent.high[1], each.alone, 0.001 * each.y) << each.y << each.weights;
    for (char const* const items : {"#71,#84", "#84,#71"}) {
      ReadModel const both(data + ProductText(100, "a", items));
      EXPECT_NEAR(both->extent.high[1], each.withRectangle, 0.001 * each.y) << each.y << each.weights;
      EXPECT_EQ(both->warnings, std::vector<std::string>());
    }
  }
}

// Such a curve can leave the hull of its control points, and is refused whether or not they are in the box.
TEST(StepShapesTest, RefusesSplinesWithoutPositiveWeights) {
  for (char const* const weights : {"1.,-0.5,1.", "1.,0.,1.", "-1.,-1.,-1.", "1.,1.", "1.,1E400,1."}) {
    ReadModel const model(RectangleText() + "#70=OPEN_SHELL('',(#62));\n#71=SHELL_BASED_SURFACE_MODEL('',(#70));\n" +
                          SplineText(2.0, weights) + ProductText(100, "a", "#71,#84"));
    ExpectBox(model->extent, {0, 0, 0, 4, 3, 0});
    EXPECT_EQ(model->warnings, std::vector<std::string>{"#80: the curve is damaged or of an unknown type"}) << weights;
  }
}

// Damage is reported although the control points are in the box.
TEST(StepShapesTest, WarnsAboutDamagedKnotsInBox) {
  std::string const data = RectangleText() + "#70=OPEN_SHELL('',(#62));\n#71=SHELL_BASED_SURFACE_MODEL('',(#70));\n" +
                           PointText(80, "1.,1.,0.") + PointText(81, "2.,2.,0.") + PointText(82, "3.,1.,0.");
  for (char const* const knots : {"(3,3),(0.,0.)", "(3,3),(1.,0.)", "(3,2),(0.,1.)", "(3,4),(0.,1.)", "(3),(0.,1.)"}) {
    ReadModel const model(data + "#83=B_SPLINE_CURVE_WITH_KNOTS('',2,(#80,#81,#82),.U.,.F.,.F.," + knots +
                          ",.U.);\n#84=GEOMETRIC_CURVE_SET('',(#83));\n" + ProductText(100, "a", "#71,#84"));
    ExpectBox(model->extent, {0, 0, 0, 4, 3, 0});
    EXPECT_EQ(model->warnings, std::vector<std::string>{"#83: the curve is damaged or of an unknown type"}) << knots;
  }
}

// The control points are in the box, but not the curves that are made from the spline.
TEST(StepShapesTest, EvaluatesOffsetOfSplineInBox) {
  std::string const data = RectangleText() + "#70=OPEN_SHELL('',(#62));\n#71=SHELL_BASED_SURFACE_MODEL('',(#70));\n" +
                           PointText(80, "1.,1.,0.") + PointText(81, "2.,1.,0.") + PointText(82, "3.,1.,0.");
  ReadModel const model(data +
                        "#83=B_SPLINE_CURVE_WITH_KNOTS('',2,(#80,#81,#82),.U.,.F.,.F.,(3,3),(0.,1.),.U.);\n"
                        "#85=DIRECTION('',(0.,0.,1.));\n#86=OFFSET_CURVE_3D('',#83,5.,.F.,#85);\n"
                        "#84=GEOMETRIC_CURVE_SET('',(#86));\n" +
                        ProductText(100, "a", "#71,#84"));
  EXPECT_EQ(model->warnings, std::vector<std::string>());
  ExpectBox(model->extent, {0, 0, 0, 4, 6, 0});
}

// A coordinate that all control points share is that of the curve, without rounding.
TEST(StepShapesTest, ExtentOfSplineHasNoRounding) {
  for (double const z : {0.1, 0.3, 0.7, 200.1, -4.7}) {
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", z);
    std::string data;
    for (int i = 0; i < 6; ++i) data += PointText(20 + i, std::to_string(i) + ".,0.," + text);
    data +=
        "#30=B_SPLINE_CURVE_WITH_KNOTS('',3,(#20,#21,#22,#23,#24,#25),.U.,.F.,.F.,(4,1,1,4),(0.,0.3,0.7,1.1),.U.);\n"
        "#31=GEOMETRIC_CURVE_SET('',(#30));\n";
    ReadModel const model(data + ProductText(100, "a", "#31"));
    EXPECT_EQ(model->extent.low[2], model->extent.high[2]) << z;
    EXPECT_DOUBLE_EQ(model->extent.low[2], z);
    ReadModel const placed(data + ProductText(100, "a", "#31") + ProductText(110, "b", "#12") +
                           UsageText(120, 110, 100));
    EXPECT_EQ(placed->products[0].extent.low[2], model->extent.low[2]) << z;
    EXPECT_EQ(placed->products[0].extent.high[2], model->extent.high[2]) << z;
  }
}

// More curves than wait for the box at once. Radii and heights fall and then rise.
TEST(StepShapesTest, ExtentOfManyCurves) {
  std::string data = PointText(50, "0.,0.,0.") + PointText(51, "1.,0.,0.");
  std::string circles;
  for (int i = 0; i < 9000; ++i) {
    data +=
        "#" + std::to_string(1000 + i) + "=CIRCLE('',#12," + std::to_string(i < 5000 ? 6000 - i : 1000 + i) + ".);\n";
    circles += (i == 0 ? "#" : ",#") + std::to_string(1000 + i);
  }
  std::string splines;
  for (int i = 0; i < 200; ++i) {
    std::string const id = std::to_string(20000 + 2 * i);
    int const height = i < 150 ? 400 - 2 * i : 100 + 2 * i;
    data += PointText(20001 + 2 * i, "0.5," + std::to_string(height) + ".,0.");
    data += "#" + id + "=B_SPLINE_CURVE_WITH_KNOTS('',2,(#50,#" + std::to_string(20001 + 2 * i) +
            ",#51),.U.,.F.,.F.,(3,3),(0.,1.),.U.);\n";
    splines += (i == 0 ? "#" : ",#") + id;
  }
  data += "#60=GEOMETRIC_CURVE_SET('',(" + circles + "));\n#61=GEOMETRIC_CURVE_SET('',(" + splines + "));\n";
  ReadModel const wide(data + ProductText(100, "a", "#60"));
  ExpectBox(wide->extent, {-9999, -9999, 0, 9999, 9999, 0});
  ReadModel const high(data + ProductText(100, "a", "#61"));
  EXPECT_NEAR(high->extent.high[1], 249, 1);
  EXPECT_EQ(high->extent.low[1], 0);
  ReadModel const all(data + ProductText(100, "a", "#61,#60"));
  ExpectBox(all->extent, {-9999, -9999, 0, 9999, 9999, 0});
}

// Arcs whose ends are in the box of the rectangle: one leaves it between them, the other does not.
TEST(StepShapesTest, ArcBeyondBoxIsEvaluated) {
  std::string const data = RectangleText() + "#70=OPEN_SHELL('',(#62));\n#71=SHELL_BASED_SURFACE_MODEL('',(#70));\n" +
                           PointText(80, "2.,3.,0.") + PointText(83, "3.,3.,0.") + PointText(84, "1.,3.,0.") +
                           "#81=AXIS2_PLACEMENT_3D('',#80,$,$);\n#82=CIRCLE('',#81,1.);\n"
                           "#85=VERTEX_POINT('',#83);\n#86=VERTEX_POINT('',#84);\n"
                           "#90=CONNECTED_EDGE_SET('',(#91));\n#92=EDGE_BASED_WIREFRAME_MODEL('',(#90));\n";
  ReadModel const above(data + "#91=EDGE_CURVE('',#85,#86,#82,.T.);\n" + ProductText(100, "a", "#71,#92"));
  ExpectBox(above->extent, {0, 0, 0, 4, 4, 0});
  ReadModel const below(data + "#91=EDGE_CURVE('',#86,#85,#82,.T.);\n" + ProductText(100, "a", "#71,#92"));
  ExpectBox(below->extent, {0, 0, 0, 4, 3, 0});
}

// The same instances with what only the general way reads: comments, escapes, strings over lines.
TEST(StepShapesTest, CountsItemsInAnyForm) {
  for (char const* const name : {"/* c */''", "'\\X2\\00E9\\X0\\'", "'a\nb'", "'it''s'", " '' "}) {
    std::string data = RectangleText() + "#70=CLOSED_SHELL('',(#62));\n#71=MANIFOLD_SOLID_BREP('',#70);\n";
    for (std::size_t at = data.find("(''"); at != std::string::npos; at = data.find("(''", at + 3)) {
      data.replace(at + 1, 2, name);
    }
    ReadModel const model(data + ProductText(100, "a", "#71"));
    EXPECT_EQ(model->warnings, std::vector<std::string>());
    EXPECT_EQ(model->products[0].solids, 1);
    EXPECT_EQ(model->products[0].faces, 1);
    EXPECT_EQ(model->products[0].edges, 4);
    ExpectBox(model->extent, {0, 0, 0, 4, 3, 0});
  }
}

TEST(StepShapesTest, ExtentOfMappedEllipseIsExact) {
  ReadModel const model(
      "#20=ELLIPSE('',#12,3.,1.);\n#21=GEOMETRIC_CURVE_SET('',(#20));\n"
      "#22=SHAPE_REPRESENTATION('',(#21),#1);\n#23=REPRESENTATION_MAP(#12,#22);\n" +
      PointText(24, "10.,0.,0.") +
      "#25=DIRECTION('',(0.,1.,0.));\n#26=DIRECTION('',(0.,0.,1.));\n"
      "#27=AXIS2_PLACEMENT_3D('',#24,#26,#25);\n#28=MAPPED_ITEM('',#23,#27);\n" +
      ProductText(100, "a", "#28"));
  ExpectBox(model->extent, {9, -3, 0, 11, 3, 0});
}

TEST(StepShapesTest, MappedItemsThatContainThemselvesEnd) {
  ReadModel const model(
      "#22=SHAPE_REPRESENTATION('',(#28,#28),#1);\n#23=REPRESENTATION_MAP(#12,#22);\n"
      "#28=MAPPED_ITEM('',#23,#12);\n" +
      ProductText(100, "a", "#28"));
  EXPECT_TRUE(model->extent.isEmpty);
  EXPECT_FALSE(model->warnings.empty());
}

TEST(StepShapesTest, IgnoresUnusableNumbers) {
  ReadModel const model(PointText(20, "1.E308,0.,0.") + PointText(21, "1.,2.,3.") +
                        "#22=GEOMETRIC_SET('',(#20,#21));\n" + ProductText(100, "a", "#22"));
  EXPECT_EQ(model->warnings, std::vector<std::string>{"#20: a coordinate is not a usable number"});
  ExpectBox(model->extent, {1, 2, 3, 1, 2, 3});
}

TEST(StepShapesTest, MakesPolylinesOnRequest) {
  ReadModel const model(RectangleText() + "#70=OPEN_SHELL('',(#62));\n#71=SHELL_BASED_SURFACE_MODEL('',(#70));\n" +
                            ProductText(100, "a", "#71"),
                        true);
  ASSERT_EQ(model->products[0].polylines.size(), 4U);
  EXPECT_EQ(model->products[0].polylines[0].instance, "#40");
  std::vector<double> const& points = model->products[0].polylines[0].coordinates;
  EXPECT_EQ(std::vector<double>(points.begin(), points.begin() + 3), (std::vector<double>{0, 0, 0}));
  EXPECT_EQ(std::vector<double>(points.end() - 3, points.end()), (std::vector<double>{4, 0, 0}));
}

TEST(StepShapesTest, ReadsTriangulatedFaces) {
  ReadModel const model(std::string(kTetrahedron) +
                            "#21=TRIANGULATED_FACE('',#20,3,(),$,(1,2,3),((1,2,3)));\n"
                            "#22=TRIANGULATED_FACE('',#20,4,(),$,(),((1,2,4),(2,3,4),(3,1,4)));\n"
                            "#23=TESSELLATED_SOLID('',(#21,#22),$);\n" +
                            ProductText(100, "a", "#23"),
                        true);
  ModelProduct const& product = model->products[0];
  EXPECT_EQ(model->warnings, std::vector<std::string>());
  EXPECT_EQ(product.solids, 1);
  EXPECT_EQ(product.faces, 2);
  ExpectBox(product.extent, {0, 0, 0, 1, 1, 1});
  ASSERT_EQ(product.meshes.size(), 2U);
  EXPECT_EQ(product.meshes[0].triangles, (std::vector<std::uint32_t>{0, 1, 2}));
  EXPECT_EQ(product.meshes[1].triangles.size(), 9U);
}

// Strip 1 2 3 4: triangles 1 2 3 and 2 4 3. Fan 1 2 3 4: triangles 1 2 3 and 1 3 4.
TEST(StepShapesTest, ReadsStripsAndFans) {
  ReadModel const model(std::string(kTetrahedron) +
                            "#21=COMPLEX_TRIANGULATED_FACE('',#20,4,(),$,(),((1,2,3,4)),());\n"
                            "#22=COMPLEX_TRIANGULATED_SURFACE_SET('',#20,4,(),(1,2,3,4),(),((1,2,3,4)));\n"
                            "#23=TESSELLATED_SHELL('',(#21),$);\n#24=TESSELLATED_GEOMETRIC_SET('',(#22));\n" +
                            ProductText(100, "a", "#23,#24"),
                        true);
  ModelProduct const& product = model->products[0];
  EXPECT_EQ(product.shells, 1);
  EXPECT_EQ(product.faces, 1);
  ASSERT_EQ(product.meshes.size(), 2U);
  EXPECT_EQ(product.meshes[0].triangles, (std::vector<std::uint32_t>{0, 1, 2, 1, 3, 2}));
  EXPECT_EQ(product.meshes[1].triangles, (std::vector<std::uint32_t>{0, 1, 2, 0, 2, 3}));
}

// Indices that exceed pnindex are those of the coordinates.
TEST(StepShapesTest, AcceptsDirectTriangleIndices) {
  ReadModel const model(
      std::string(kTetrahedron) +
      "#21=TRIANGULATED_FACE('',#20,3,(),$,(2,3,4),((2,3,4)));\n#23=TESSELLATED_SHELL('',(#21),$);\n" +
      ProductText(100, "a", "#23"));
  EXPECT_EQ(model->warnings, std::vector<std::string>());
  ExpectBox(model->extent, {0, 0, 0, 1, 1, 1});
}

TEST(StepShapesTest, SkipsInvalidTriangles) {
  ReadModel const model(std::string(kTetrahedron) +
                        "#21=TRIANGULATED_SURFACE_SET('',#20,4,(),(),((1,2,3),(1,2,9),(0,1,2),(1,2)));\n"
                        "#22=TESSELLATED_GEOMETRIC_SET('',(#21));\n" +
                        ProductText(100, "a", "#22"));
  EXPECT_EQ(model->warnings, std::vector<std::string>{"#21: triangles with invalid points are skipped"});
  ExpectBox(model->extent, {0, 0, 0, 1, 1, 0});
}

TEST(StepShapesTest, ReadsTessellatedCurvesAndPoints) {
  ReadModel const model(std::string(kTetrahedron) +
                            "#21=TESSELLATED_CURVE_SET('',#20,((1,2),(2,3)));\n#22=TESSELLATED_POINT_SET('',#20,(4));\n"
                            "#23=TESSELLATED_GEOMETRIC_SET('',(#21,#22));\n" +
                            ProductText(100, "a", "#23"),
                        true);
  EXPECT_EQ(model->products[0].polylines.size(), 2U);
  ExpectBox(model->extent, {0, 0, 0, 1, 1, 1});
}

TEST(StepShapesTest, PlacesRepositionedTessellation) {
  ReadModel const model(std::string(kTetrahedron) + PointText(30, "5.,0.,0.") +
                        "#31=AXIS2_PLACEMENT_3D('',#30,$,$);\n#21=TESSELLATED_CURVE_SET('',#20,((1,2)));\n"
                        "#22=(GEOMETRIC_REPRESENTATION_ITEM()REPOSITIONED_TESSELLATED_ITEM(#31)REPRESENTATION_ITEM('')"
                        "TESSELLATED_GEOMETRIC_SET((#21))TESSELLATED_ITEM());\n" +
                        ProductText(100, "a", "#22"));
  ExpectBox(model->extent, {5, 0, 0, 6, 0, 0});
}

TEST(StepShapesTest, PlacesRepositionedCurveSet) {
  ReadModel const model(std::string(kTetrahedron) + PointText(30, "5.,0.,0.") +
                        "#31=AXIS2_PLACEMENT_3D('',#30,$,$);\n"
                        "#22=(GEOMETRIC_REPRESENTATION_ITEM()REPOSITIONED_TESSELLATED_ITEM(#31)REPRESENTATION_ITEM('')"
                        "TESSELLATED_CURVE_SET(#20,((1,2)))TESSELLATED_ITEM());\n" +
                        ProductText(100, "a", "#22"));
  ExpectBox(model->extent, {5, 0, 0, 6, 0, 0});
}

// Normals belong to the entries of pnindex, so that one point can have two; a single one belongs to all.
TEST(StepShapesTest, ReadsNormals) {
  ReadModel const model(
      std::string(kTetrahedron) +
          "#21=TRIANGULATED_FACE('',#20,4,((0.,0.,2.),(0.,3.,0.),(-1.,0.,0.),(3.,4.,0.)),$,(1,2,3,1),((1,2,3),(4,2,3)))"
          ";\n"
          "#22=TRIANGULATED_FACE('',#20,3,((0.,0.,1.)),$,(1,2,3),((1,2,3)));\n"
          "#23=TRIANGULATED_FACE('',#20,4,((1.,0.,0.),(0.,1.,0.),(0.,0.,1.),(0.,0.,0.)),$,(),((2,3,4)));\n"
          "#24=TRIANGULATED_FACE('',#20,3,((0.,0.,1.),(0.,1.,0.)),$,(1,2,3),((1,2,3)));\n"
          "#25=TESSELLATED_SHELL('',(#21,#22,#23,#24),$);\n" +
          ProductText(100, "a", "#25"),
      true);
  auto const& meshes = model->products[0].meshes;
  ASSERT_EQ(meshes.size(), 4U);
  EXPECT_EQ(meshes[0].triangles, (std::vector<std::uint32_t>{0, 1, 2, 3, 1, 2}));
  EXPECT_EQ(meshes[0].points.size(), 12U);
  EXPECT_EQ(meshes[0].normals, (std::vector<double>{0, 0, 1, 0, 1, 0, -1, 0, 0, 0.6, 0.8, 0}));
  EXPECT_EQ(meshes[1].normals, (std::vector<double>{0, 0, 1, 0, 0, 1, 0, 0, 1}));
  EXPECT_EQ(meshes[2].normals, (std::vector<double>{0, 1, 0, 0, 0, 1, 0, 0, 0}));
  // Two normals for three points cannot be assigned.
  EXPECT_TRUE(meshes[3].normals.empty());
}

// Points after the last one that is used need no normals.
TEST(StepShapesTest, ReadsNormalsOfFirstPoints) {
  ReadModel const model(std::string(kTetrahedron) +
                            "#21=TRIANGULATED_FACE('',#20,3,((0.,0.,1.),(0.,1.,0.),(1.,0.,0.)),$,(),((1,2,3)));\n"
                            "#22=TRIANGULATED_FACE('',#20,2,((0.,0.,1.),(0.,1.,0.)),$,(),((1,2,3)));\n"
                            "#25=TESSELLATED_SHELL('',(#21,#22),$);\n" +
                            ProductText(100, "a", "#25"),
                        true);
  auto const& meshes = model->products[0].meshes;
  ASSERT_EQ(meshes.size(), 2U);
  EXPECT_EQ(meshes[0].normals, (std::vector<double>{0, 0, 1, 0, 1, 0, 1, 0, 0}));
  EXPECT_TRUE(meshes[1].normals.empty());
}

// The target mirrors y: the order of the corners is reversed, and normals are mirrored.
TEST(StepShapesTest, MirrorsMeshes) {
  ReadModel const model(
      std::string(kTetrahedron) +
          "#21=TRIANGULATED_FACE('',#20,3,((0.,1.,0.)),$,(1,2,3),((1,2,3)));\n#22=TESSELLATED_SHELL('',(#21),$);\n"
          "#23=SHAPE_REPRESENTATION('',(#22),#1);\n#24=REPRESENTATION_MAP(#12,#23);\n#25=MAPPED_ITEM('',#24,#26);\n"
          "#26=CARTESIAN_TRANSFORMATION_OPERATOR_3D('',#27,#28,#11,$,#29);\n#27=DIRECTION('',(1.,0.,0.));\n"
          "#28=DIRECTION('',(0.,-1.,0.));\n#29=DIRECTION('',(0.,0.,1.));\n" +
          ProductText(100, "a", "#25"),
      true);
  ASSERT_EQ(model->products[0].meshes.size(), 1U);
  ModelMesh const& mesh = model->products[0].meshes[0];
  EXPECT_EQ(mesh.points, (std::vector<double>{0, 0, 0, 1, 0, 0, 0, -1, 0}));
  EXPECT_EQ(mesh.triangles, (std::vector<std::uint32_t>{0, 2, 1}));
  EXPECT_EQ(mesh.normals, (std::vector<double>{0, -1, 0, 0, -1, 0, 0, -1, 0}));
}

TEST(StepShapesTest, ColoursMeshesByFace) {
  auto const style = [](int id, std::string const& item, std::string const& red) {
    auto const name = [id](int i) { return "#" + std::to_string(id + i); };
    return name(0) + "=STYLED_ITEM('',(" + name(1) + ")," + item + ");\n" + name(1) +
           "=PRESENTATION_STYLE_ASSIGNMENT((" + name(2) + "));\n" + name(2) + "=CURVE_STYLE('',$,$," + name(3) +
           ");\n" + name(3) + "=COLOUR_RGB(''," + red + ",0.,0.);\n";
  };
  ReadModel const model(std::string(kTetrahedron) +
                            "#21=TRIANGULATED_FACE('',#20,3,(),$,(1,2,3),((1,2,3)));\n"
                            "#22=TRIANGULATED_FACE('',#20,3,(),#26,(1,2,4),((1,2,3)));\n"
                            "#23=TRIANGULATED_FACE('',#20,3,(),$,(1,3,4),((1,2,3)));\n"
                            "#24=TESSELLATED_SOLID('',(#21,#22,#23),$);\n#26=ADVANCED_FACE('',(),$,.T.);\n" +
                            style(30, "#21", "1.") + style(40, "#26", "0.6") + style(50, "#24", "0.2") +
                            ProductText(100, "a", "#24"),
                        true);
  std::vector<std::string> colours;
  for (ModelMesh const& each : model->products[0].meshes) {
    ASSERT_GE(each.colour, 0);
    colours.push_back(model->colours[static_cast<std::size_t>(each.colour)].colour.Hexadecimal());
  }
  EXPECT_EQ(colours, (std::vector<std::string>{"#ff0000", "#990000", "#330000"}));
}

TEST(StepShapesTest, SkipsUnusableCoordinates) {
  ReadModel const model(
      "#20=COORDINATES_LIST('',4,((0.,0.,0.),(1.,0.,0.),(0.,1.,1e308),('x',$,1.)));\n"
      "#21=TRIANGULATED_FACE('',#20,4,(),$,(),((1,2,3),(1,2,4)));\n"
      "#22=TESSELLATED_CURVE_SET('',#20,((1,2,3),(4,1,2)));\n"
      "#23=TESSELLATED_GEOMETRIC_SET('',(#21,#22));\n" +
          ProductText(100, "a", "#23"),
      true);
  EXPECT_TRUE(model->products[0].meshes.empty());
  ASSERT_EQ(model->products[0].polylines.size(), 2U);
  EXPECT_EQ(model->products[0].polylines[0].coordinates, (std::vector<double>{0, 0, 0, 1, 0, 0}));
  EXPECT_EQ(model->products[0].polylines[1].coordinates, (std::vector<double>{0, 0, 0, 1, 0, 0}));
  ExpectBox(model->extent, {0, 0, 0, 1, 0, 0});
}

TEST(StepShapesTest, ReadsPlanarConics) {
  ReadModel const model(
      "#20=CIRCLE('',#21,2.);\n#21=AXIS2_PLACEMENT_2D('',#22,$);\n#22=CARTESIAN_POINT('',(1.,1.));\n" +
      ProductText(100, "a", "#20"));
  EXPECT_TRUE(model->warnings.empty());
  ExpectBox(model->extent, {-1, -1, 0, 3, 3, 0});
}

// Edges after an unusual one, which is not read at once, do not precede it.
TEST(StepShapesTest, ReadsEdgesInOrderOfLoop) {
  std::string data = RectangleText();
  std::string const usual = "(#50,#51,#52,#53)";
  data.replace(data.find(usual), usual.size(), "(#50,#55,#52,#53)");
  data += "#55=ORIENTED_EDGE('',*,*,#51,.F.);\n#70=OPEN_SHELL('',(#62));\n#71=SHELL_BASED_SURFACE_MODEL('',(#70));\n";
  // The third edge has the first colour.
  data += StyleText(0, "1.,0.,0.", 42) + StyleText(1, "0.,1.,0.", 40) + StyleText(2, "0.,0.,1.", 41);
  ReadModel const model(data + ProductText(200, "a", "#71"), true);
  EXPECT_EQ(model->warnings, std::vector<std::string>());
  ModelProduct const& product = model->products[0];
  EXPECT_EQ(product.colours, (std::vector<int>{1, 2, 0}));
  std::vector<std::string> instances;
  std::vector<int> colours;
  for (ModelPolyline const& each : product.polylines) {
    instances.push_back(each.instance);
    colours.push_back(each.colour);
  }
  EXPECT_EQ(instances, (std::vector<std::string>{"#40", "#41", "#42", "#43"}));
  EXPECT_EQ(colours, (std::vector<int>{1, 2, 0, -1}));
}

// In any order of the items.
TEST(StepShapesTest, ReadsMappedShapeAndShapeItself) {
  std::string const data = RectangleText() +
                           "#70=OPEN_SHELL('',(#62));\n#71=SHELL_BASED_SURFACE_MODEL('',(#70));\n"
                           "#72=SHAPE_REPRESENTATION('',(#71),#1);\n#73=REPRESENTATION_MAP(#12,#72);\n" +
                           PointText(74, "10.,20.,30.") +
                           "#75=AXIS2_PLACEMENT_3D('',#74,$,$);\n#76=MAPPED_ITEM('',#73,#75);\n";
  for (char const* const items : {"#71,#76", "#76,#71"}) {
    ReadModel const model(data + ProductText(100, "a", items), true);
    EXPECT_EQ(model->products[0].edges, 4);
    EXPECT_EQ(model->products[0].polylines.size(), 8U);
    ExpectBox(model->products[0].extent, {0, 0, 0, 14, 23, 30});
  }
}

TEST(StepShapesTest, WarnsAboutUnknownItems) {
  ReadModel const model("#20=STRANGE('');\n#21=TEXT_LITERAL('','x',#12,'baseline left',.RIGHT.,#12);\n" +
                        ProductText(100, "a", "#20,#21"));
  EXPECT_EQ(model->warnings, std::vector<std::string>{"#20: an item of the unknown type STRANGE is skipped"});
}

TEST(StepShapesTest, WarnsAboutWrongTypes) {
  ReadModel const model(
      "#20=MANIFOLD_SOLID_BREP('',#12);\n#21=CLOSED_SHELL('',(#20,#99,5));\n"
      "#22=SHELL_BASED_SURFACE_MODEL('',(#21));\n" +
      ProductText(100, "a", "#20,#22"));
  EXPECT_EQ(model->warnings,
            (std::vector<std::string>{
                "#20: attribute outer: expected CONNECTED_FACE_SET, found #12 of type AXIS2_PLACEMENT_3D",
                "#21: attribute cfs_faces: expected FACE, found #20 of type MANIFOLD_SOLID_BREP",
                "#21: attribute cfs_faces: expected FACE, found #99, which the file does not contain",
                "#21: attribute cfs_faces: expected FACE, found a number"}));
}

// In the coordinates of its product, the spline is in the box of the points.
TEST(StepShapesTest, SplineExtendsBoxOfRotatedProduct) {
  std::string const data =
      PointText(20, "0.,0.,0.") + PointText(21, "10.,10.,0.") + PointText(22, "0.,8.,0.") + PointText(23, "2.,10.,0.") +
      "#24=B_SPLINE_CURVE_WITH_KNOTS('',1,(#22,#23),.UNSPECIFIED.,.F.,.F.,(2,2),(0.,1.),.UNSPECIFIED.);\n"
      "#25=GEOMETRIC_SET('',(#20,#21,#24));\n" +
      ProductText(100, "child", "#25,#12") +
      // Rotated by 45 degrees about z; twice, the second time moved by 100 along x.
      "#30=DIRECTION('',(0.,0.,1.));\n#31=DIRECTION('',(1.,1.,0.));\n#32=AXIS2_PLACEMENT_3D('',#11,#30,#31);\n" +
      PointText(33, "100.,0.,0.") + "#34=AXIS2_PLACEMENT_3D('',#33,#30,#31);\n" +
      ProductText(200, "parent", "#32,#34") + UsageText(300, 200, 100) + PlacementText(301, 300, 105, 205, 12, 32) +
      UsageText(310, 200, 100) + PlacementText(311, 310, 105, 205, 12, 34);
  ReadModel const model(data);
  EXPECT_EQ(model->warnings, std::vector<std::string>());
  ASSERT_EQ(model->products.size(), 2U);
  ExpectBox(model->products[0].extent, {0, 0, 0, 10, 10, 0});
  double const half = std::sqrt(0.5);
  ExpectBox(model->products[1].extent, {-8 * half, 0, 0, 100, 20 * half, 0});
}
