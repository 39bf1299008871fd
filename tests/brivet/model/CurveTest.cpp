#include "Curve.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr Curve::Frame kGlobal = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};

void ExpectPoint(Curve const& curve, double t, double x, double y, double z) {
  double point[3];
  curve.Evaluate(t, point);
  EXPECT_NEAR(point[0], x, 1e-12) << t;
  EXPECT_NEAR(point[1], y, 1e-12) << t;
  EXPECT_NEAR(point[2], z, 1e-12) << t;
}

// The cubic (t, t^2, t^3) as a Bezier curve: its control points are the values of the blossom.
std::unique_ptr<Curve> TwistedCubic() {
  return Curve::BSpline(3, {0, 0, 0, 1.0 / 3, 0, 0, 2.0 / 3, 1.0 / 3, 0, 1, 1, 1}, {0, 0, 0, 0, 1, 1, 1, 1}, {});
}

// The full circle of radius 2 as a rational quadratic B-spline with nine control points.
std::unique_ptr<Curve> RationalCircle() {
  double const w = std::sqrt(0.5);
  return Curve::BSpline(2, {2, 0, 0, 2, 2, 0, 0, 2, 0, -2, 2, 0, -2, 0, 0, -2, -2, 0, 0, -2, 0, 2, -2, 0, 2, 0, 0},
                        {0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 4}, {1, w, 1, w, 1, w, 1, w, 1});
}

}  // namespace

TEST(CurveTest, EvaluatesConics) {
  ExpectPoint(*Curve::Ellipse(kGlobal, 3, 2), kPi / 2, 0, 2, 0);
  ExpectPoint(*Curve::Ellipse(kGlobal, 3, 2), kPi / 3, 1.5, std::sqrt(3.0), 0);
  ExpectPoint(*Curve::Hyperbola(kGlobal, 3, 2), std::log(2.0), 3.75, 1.5, 0);
  ExpectPoint(*Curve::Parabola(kGlobal, 2), 3, 18, 12, 0);
}

TEST(CurveTest, EvaluatesPolynomialBSpline) {
  auto const curve = TwistedCubic();
  for (double const t : {0.0, 0.1, 0.25, 0.5, 0.9, 1.0}) ExpectPoint(*curve, t, t, t * t, t * t * t);
}

// Knot insertion at 1/2 does not change the curve.
TEST(CurveTest, EvaluatesBSplineWithInnerKnot) {
  auto const curve = Curve::BSpline(2, {0, 0, 0, 0.25, 0, 0, 0.75, 0.5, 0, 1, 1, 0}, {0, 0, 0, 0.5, 1, 1, 1}, {});
  for (double const t : {0.0, 0.3, 0.5, 0.7, 1.0}) ExpectPoint(*curve, t, t, t * t, 0);
}

TEST(CurveTest, EvaluatesRationalCircle) {
  auto const curve = RationalCircle();
  ExpectPoint(*curve, 0.5, std::sqrt(2.0), std::sqrt(2.0), 0);
  for (int i = 0; i <= 40; ++i) {
    double point[3];
    curve->Evaluate(i * 0.1, point);
    EXPECT_NEAR(std::hypot(point[0], point[1]), 2.0, 1e-12);
  }
}

// Points by SciPy 1.10 for knots 0 0 0 0 1 2 3 3 3 3 and the control points below.
TEST(CurveTest, EvaluatesCubicWithManyKnots) {
  auto const curve =
      Curve::BSpline(3, {0, 0, 0, 1, 2, 0, 2, -1, 1, 4, 0, 3, 5, 2, 1, 6, 0, 0}, {0, 0, 0, 0, 1, 2, 3, 3, 3, 3}, {});
  ExpectPoint(*curve, 0, 0, 0, 0);
  ExpectPoint(*curve, 0.5, 1.1979166666666667, 0.9270833333333333, 0.3229166666666667);
  ExpectPoint(*curve, 1, 2.083333333333333, -0.083333333333333, 1.083333333333333);
  ExpectPoint(*curve, 1.7, 3.373666666666667, -0.160916666666667, 2.116416666666667);
  ExpectPoint(*curve, 3, 6, 0, 0);
}

TEST(CurveTest, OffsetOfCircleIsCircle) {
  double const up[3] = {0, 0, 1};
  auto const curve = Curve::Offset(Curve::Ellipse(kGlobal, 5, 5), 2, up);
  // z x tangent points to the centre.
  for (double const t : {0.0, 1.0, 4.0}) {
    double point[3];
    curve->Evaluate(t, point);
    EXPECT_NEAR(std::hypot(point[0], point[1]), 3.0, 1e-6);
  }
}

TEST(CurveTest, ParameterOfInvertsEvaluate) {
  double const origin[3] = {1, 2, 3};
  double const direction[3] = {0, 2, 0};
  std::vector<std::unique_ptr<Curve>> curves;
  curves.push_back(Curve::Line(origin, direction));
  curves.push_back(Curve::Ellipse(kGlobal, 3, 2));
  curves.push_back(Curve::Hyperbola(kGlobal, 3, 2));
  curves.push_back(Curve::Parabola(kGlobal, 3));
  curves.push_back(TwistedCubic());
  curves.push_back(Curve::Polyline({0, 0, 0, 1, 0, 0, 1, 1, 0}));
  for (auto const& curve : curves) {
    double point[3];
    curve->Evaluate(0.625, point);
    EXPECT_NEAR(curve->ParameterOf(point), 0.625, 1e-6);
  }
}

TEST(CurveTest, SampleKeepsChordError) {
  std::vector<double> points;
  Curve::Ellipse(kGlobal, 10, 10)->Sample(0, 2 * kPi, 0.01, points);
  ASSERT_GE(points.size(), 9U);
  EXPECT_NEAR(points[0], 10, 1e-12);
  EXPECT_NEAR(points[points.size() - 3], 10, 1e-12);
  for (std::size_t i = 3; i < points.size(); i += 3) {
    // The sagitta of a chord of a circle.
    double const half = 0.5 * std::hypot(points[i] - points[i - 3], points[i + 1] - points[i - 2]);
    EXPECT_LE(10 - std::sqrt(100 - half * half), 0.01 + 1e-12);
  }
  EXPECT_LT(points.size() / 3, 200U);
}

TEST(CurveTest, SampleOfLineHasFewPoints) {
  double const origin[3] = {0, 0, 0};
  double const direction[3] = {1, 0, 0};
  std::vector<double> points;
  Curve::Line(origin, direction)->Sample(5, 2, 0.001, points);
  EXPECT_LE(points.size() / 3, 5U);
  EXPECT_EQ(points[0], 5);
  EXPECT_EQ(points[points.size() - 3], 2);
}

TEST(CurveTest, SampleKeepsCornersOfPolyline) {
  std::vector<double> points;
  Curve::Polyline({0, 0, 0, 1, 5, 0, 2, 0, 0})->Sample(0, 2, 100, points);
  bool hasCorner = false;
  for (std::size_t i = 0; i < points.size(); i += 3) hasCorner |= points[i] == 1 && points[i + 1] == 5;
  EXPECT_TRUE(hasCorner);
}

TEST(CurveTest, SampleWithoutToleranceEnds) {
  std::vector<double> points;
  Curve::Ellipse(kGlobal, 1, 1)->Sample(0, 1, 0, points);
  EXPECT_LE(points.size() / 3, 4U * 4096U + 1U);
}

TEST(CurveTest, RefusesBadNumbers) {
  double const nan = std::numeric_limits<double>::quiet_NaN();
  double const zero[3] = {0, 0, 0};
  double const bad[3] = {nan, 0, 0};
  double const up[3] = {0, 0, 1};
  EXPECT_EQ(Curve::Line(zero, zero), nullptr);
  EXPECT_EQ(Curve::Line(bad, up), nullptr);
  EXPECT_EQ(Curve::Ellipse(kGlobal, 0, 1), nullptr);
  EXPECT_EQ(Curve::Ellipse(kGlobal, 1, -1), nullptr);
  EXPECT_EQ(Curve::Ellipse(kGlobal, nan, 1), nullptr);
  EXPECT_EQ(Curve::Parabola(kGlobal, 0), nullptr);
  EXPECT_EQ(Curve::Polyline({0, 0, 0}), nullptr);
  EXPECT_EQ(Curve::Offset(nullptr, 1, up), nullptr);
  EXPECT_EQ(Curve::Offset(Curve::Line(zero, up), 1, zero), nullptr);
  // Degree 0 and 26, knots that do not match, descend or have no range, and a weight of 0.
  EXPECT_EQ(Curve::BSpline(0, {0, 0, 0, 1, 0, 0}, {0, 1, 2}, {}), nullptr);
  EXPECT_EQ(Curve::BSpline(26, std::vector<double>(81), std::vector<double>(54), {}), nullptr);
  EXPECT_EQ(Curve::BSpline(1, {0, 0, 0, 1, 0, 0}, {0, 0, 1}, {}), nullptr);
  EXPECT_EQ(Curve::BSpline(1, {0, 0, 0, 1, 0, 0}, {0, 1, 0, 1}, {}), nullptr);
  EXPECT_EQ(Curve::BSpline(1, {0, 0, 0, 1, 0, 0}, {1, 1, 1, 1}, {}), nullptr);
  EXPECT_EQ(Curve::BSpline(1, {0, 0, 0, 1, 0, 0}, {0, 0, 1, 1}, {1, 0}), nullptr);
}

TEST(CurveTest, SamplesStraightPiecesByTheirEnds) {
  std::vector<double> const corners{0, 0, 0, 3, 0, 0, 3, 4, 0};
  std::vector<double> points;
  Curve::Polyline(corners)->Sample(0.0, 2.0, 0.001, points);
  EXPECT_EQ(points, corners);
  points.clear();
  Curve::BSpline(1, corners, {0, 0, 1, 2, 2}, {})->Sample(0.0, 2.0, 0.001, points);
  EXPECT_EQ(points, corners);
  points.clear();
  Curve::Polyline(corners)->Sample(1.5, 0.0, 0.001, points);
  EXPECT_EQ(points, (std::vector<double>{3, 2, 0, 3, 0, 0, 0, 0, 0}));
}
