// Parametric curves in space, and their polylines.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

// Curve over a range of its parameter. Coordinates are three doubles.
//
//   auto const circle = Curve::Ellipse(frame, 5.0, 5.0);
//   std::vector<double> points;
//   circle->Sample(0.0, 1.5, 0.001, points);  // a polyline with at most 0.001 between it and the arc
//
// Curves are immutable. A curve that would have numbers that are not finite, or degenerate axes, is not created: its
// factory function returns null.
class Curve {
 public:
  // Right-handed frame: an origin and two orthonormal axes.
  struct Frame {
    double origin[3];
    double x[3];
    double y[3];
  };

  Curve() = default;
  Curve(Curve const&) = delete;
  Curve& operator=(Curve const&) = delete;
  virtual ~Curve() = default;

  // Returns a line through `origin` along `direction`, which is not normalized.
  static std::unique_ptr<Curve> Line(double const* origin, double const* direction);
  // Returns origin + a cos(t) x + b sin(t) y; a circle if a equals b.
  static std::unique_ptr<Curve> Ellipse(Frame const& frame, double a, double b);
  // Returns origin + a cosh(t) x + b sinh(t) y.
  static std::unique_ptr<Curve> Hyperbola(Frame const& frame, double a, double b);
  // Returns origin + f t^2 x + 2 f t y, with the focal distance f.
  static std::unique_ptr<Curve> Parabola(Frame const& frame, double focus);
  // Returns a B-spline. `poles` are x, y, z of each control point; `knots` has one entry for each multiplicity;
  // `weights` is empty, or has a positive one for each control point. Requires: knots.size() = number of control points
  // + degree + 1, in ascending order.
  static std::unique_ptr<Curve> BSpline(int degree, std::vector<double> poles, std::vector<double> knots,
                                        std::vector<double> const& weights);
  // Returns whether BSpline returns a curve for these arguments.
  static bool IsBSpline(int degree, std::vector<double> const& poles, std::vector<double> const& knots,
                        std::vector<double> const& weights);
  // Returns the polyline through the points; the parameter of the n-th one is n.
  static std::unique_ptr<Curve> Polyline(std::vector<double> points);
  // Returns the points at `distance` from a curve, along the cross product of `reference` and the tangent.
  static std::unique_ptr<Curve> Offset(std::unique_ptr<Curve> basis, double distance, double const* reference);

  virtual void Evaluate(double t, double* point) const = 0;
  // Returns the parameter of a point that is on the curve or close to it, near the range if the curve is periodic.
  virtual double ParameterOf(double const* point) const = 0;
  // The natural range of the parameter. Unbounded curves have a range of width 0.
  virtual double First() const = 0;
  virtual double Last() const = 0;
  // The period of a closed conic, otherwise 0.
  virtual double Period() const { return 0.0; }
  // Returns the parameters between first and last where the curve may have a corner, in ascending order.
  virtual std::vector<double> Breaks(double first, double last) const;

  // Returns true for a line, whose ends determine its extent.
  virtual bool IsStraight() const { return false; }
  // Returns true if the curve is straight between its breaks, as a polyline is.
  virtual bool IsPiecewiseStraight() const { return IsStraight(); }
  // Returns true for a circle or an ellipse, and sets the origin and the scaled axes: origin + cos(t) x + sin(t) y.
  virtual bool AsArc(Frame& /*scaled*/) const { return false; }

  // Appends a polyline from `first` to `last`, in the direction of travel, both points included. Its distance from the
  // curve is at most `chordError` where the curve is smooth.
  void Sample(double first, double last, double chordError, std::vector<double>& points) const;
};
