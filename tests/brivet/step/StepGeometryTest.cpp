#include "StepGeometry.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ModelFixture.h"

namespace {

// The extent of one free curve, #20, in radians or degrees.
ModelBox ExtentOf(std::string const& data, int context = 1) {
  ReadModel const model(data + "#90=GEOMETRIC_CURVE_SET('',(#20));\n" + ProductText(100, "a", "#90", context));
  EXPECT_EQ(model->warnings, std::vector<std::string>());
  return model->extent;
}

}  // namespace

TEST(StepGeometryTest, TrimsConicByParameters) {
  std::string const circle = "#21=CIRCLE('',#12,2.);\n#20=TRIMMED_CURVE('',#21,(PARAMETER_VALUE(0.)),";
  ExpectBox(ExtentOf(circle + "(PARAMETER_VALUE(90.)),.T.,.PARAMETER.);\n", 2), {0, 0, 0, 2, 2, 0});
  ExpectBox(ExtentOf(circle + "(PARAMETER_VALUE(1.5707963267948966)),.T.,.PARAMETER.);\n", 1), {0, 0, 0, 2, 2, 0});
  // Against the sense of the circle, the other three quarters.
  ExpectBox(ExtentOf(circle + "(PARAMETER_VALUE(90.)),.F.,.PARAMETER.);\n", 2), {-2, -2, 0, 2, 2, 0});
}

TEST(StepGeometryTest, TrimsConicByPoints) {
  ExpectBox(ExtentOf("#21=CIRCLE('',#12,2.);\n" + PointText(22, "0.,2.,0.") + PointText(23, "-2.,0.,0.") +
                     "#20=TRIMMED_CURVE('',#21,(#22),(#23),.T.,.CARTESIAN.);\n"),
            {-2, 0, 0, 0, 2, 0});
}

TEST(StepGeometryTest, TrimsLineByParameters) {
  ExpectBox(ExtentOf("#21=DIRECTION('',(0.,3.,0.));\n#22=VECTOR('',#21,2.);\n#23=LINE('',#11,#22);\n"
                     "#20=TRIMMED_CURVE('',#23,(PARAMETER_VALUE(1.)),(PARAMETER_VALUE(4.)),.T.,.PARAMETER.);\n"),
            {0, 2, 0, 0, 8, 0});
}

TEST(StepGeometryTest, ReadsCompositeCurve) {
  ExpectBox(ExtentOf("#21=POLYLINE('',(#11,#31));\n#22=POLYLINE('',(#31,#32));\n" + PointText(31, "1.,0.,0.") +
                     PointText(32, "1.,5.,-1.") +
                     "#23=COMPOSITE_CURVE_SEGMENT(.CONTINUOUS.,.T.,#21);\n"
                     "#24=COMPOSITE_CURVE_SEGMENT(.CONTINUOUS.,.F.,#22);\n#20=COMPOSITE_CURVE('',(#23,#24),.F.);\n"),
            {0, 0, -1, 1, 5, 0});
}

TEST(StepGeometryTest, ReadsReplicaWithScale) {
  ExpectBox(ExtentOf("#21=POLYLINE('',(#11,#31));\n" + PointText(31, "1.,2.,0.") + PointText(32, "10.,0.,0.") +
                     "#22=CARTESIAN_TRANSFORMATION_OPERATOR_3D('',$,$,#32,3.,$);\n#20=CURVE_REPLICA('',#21,#22);\n"),
            {10, 0, 0, 13, 6, 0});
}

// All forms of a straight B-spline of degree 1.
TEST(StepGeometryTest, ReadsFormsOfBSplines) {
  std::string const points = PointText(31, "1.,0.,0.") + PointText(32, "1.,5.,0.");
  for (std::string const form :
       {"#20=B_SPLINE_CURVE_WITH_KNOTS('',1,(#11,#31,#32),.UNSPECIFIED.,.F.,.F.,(2,1,2),(0.,1.,2.),.UNSPECIFIED.);\n",
        "#20=QUASI_UNIFORM_CURVE('',1,(#11,#31,#32),.UNSPECIFIED.,.F.,.F.);\n",
        "#20=UNIFORM_CURVE('',1,(#11,#31,#32),.UNSPECIFIED.,.F.,.F.);\n",
        "#20=BEZIER_CURVE('',1,(#11,#31,#32),.UNSPECIFIED.,.F.,.F.);\n",
        "#20=(BOUNDED_CURVE()B_SPLINE_CURVE(1,(#11,#31,#32),.UNSPECIFIED.,.F.,.F.)"
        "B_SPLINE_CURVE_WITH_KNOTS((2,1,2),(0.,1.,2.),.UNSPECIFIED.)CURVE()GEOMETRIC_REPRESENTATION_ITEM()"
        "RATIONAL_B_SPLINE_CURVE((1.,2.,1.))REPRESENTATION_ITEM(''));\n"}) {
    ExpectBox(ExtentOf(points + form), {0, 0, 0, 1, 5, 0});
  }
}

TEST(StepGeometryTest, WarnsAboutDamagedCurves) {
  ReadModel const model(
      "#20=CIRCLE('',#12,-1.);\n#21=COMPOSITE_CURVE('',(#22),.F.);\n"
      "#22=COMPOSITE_CURVE_SEGMENT(.CONTINUOUS.,.T.,#21);\n"
      "#23=B_SPLINE_CURVE_WITH_KNOTS('',1,(#11,#11),.U.,.F.,.F.,(2000000000,2),(0.,1.),.U.);\n"
      "#90=GEOMETRIC_CURVE_SET('',(#20,#21,#23));\n" +
      ProductText(100, "a", "#90"));
  EXPECT_EQ(model->warnings, (std::vector<std::string>{"#20: the curve is damaged or of an unknown type",
                                                       "#21: the curve refers to itself",
                                                       "#23: the curve is damaged or of an unknown type"}));
  EXPECT_TRUE(model->extent.isEmpty);
}
