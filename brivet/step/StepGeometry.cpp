#include "StepGeometry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "ModelBox.h"

// A curve is reduced to pieces: a basis curve and a range of its parameter. Trimmed curves set the range, composite
// curves have several pieces, surface curves are replaced by their 3D curve, and replicas by mapped polylines. The
// chain of references is followed to a bounded depth, since damaged files contain cycles, and with a bounded number of
// pieces and points for the whole document, since a short file can name the same curve in each of many edges.

namespace {

constexpr int kDepthLimit = 16;
constexpr long kEffortLimit = 10000000;  // plus kEffortPerInstance for each instance of the document
constexpr long kEffortPerInstance = 64;
constexpr int kKnotLimit = 10000000;

double Length(double const* v) {
  return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
}

void Cross(double const* a, double const* b, double* result) {
  result[0] = a[1] * b[2] - a[2] * b[1];
  result[1] = a[2] * b[0] - a[0] * b[2];
  result[2] = a[0] * b[1] - a[1] * b[0];
}

// Removes from `v` its part along the unit vector `axis`, and normalizes it. Returns false if nothing is left.
bool Orthogonalize(double* v, double const* axis) {
  double const along = v[0] * axis[0] + v[1] * axis[1] + v[2] * axis[2];
  for (int i = 0; i < 3; ++i) v[i] -= along * axis[i];
  double const length = Length(v);
  if (!(length > 1e-12)) return false;
  for (int i = 0; i < 3; ++i) v[i] /= length;
  return true;
}

// ISO 10303-42, first_proj_axis: the default direction of x is that of the global x axis, or of y if z is parallel to
// it.
void DefaultXAxis(double const* z, double* x) {
  bool const isParallel = std::abs(z[0]) > 1.0 - 1e-9;
  x[0] = isParallel ? 0.0 : 1.0;
  x[1] = isParallel ? 1.0 : 0.0;
  x[2] = 0.0;
}

bool IsSame(double const* a, double const* b) {
  double const scale = 1.0 + std::max({std::abs(a[0]), std::abs(a[1]), std::abs(a[2])});
  return std::abs(a[0] - b[0]) + std::abs(a[1] - b[1]) + std::abs(a[2] - b[2]) <= 1e-9 * scale;
}

}  // namespace

bool StepGeometry::ReadPoint(std::uint32_t point, double* coordinates) {
  auto const isUsable = [&] {
    return std::abs(coordinates[0]) <= kLargestCoordinate && std::abs(coordinates[1]) <= kLargestCoordinate &&
           std::abs(coordinates[2]) <= kLargestCoordinate;
  };
  if (context.store.ReadTriple(point, STEP_ATTRIBUTE(CartesianPoint, "coordinates"), coordinates) && isUsable()) {
    return true;
  }
  StepValue const list = context.store.Get(point, STEP_ATTRIBUTE(CartesianPoint, "coordinates"));
  if (list.kind != StepValue::List) return false;
  std::fill_n(coordinates, 3, 0.0);
  int count = 0;
  for (StepValues values(list); count < 3 && values.Next(); ++count) {
    if (values.Current().kind != StepValue::Number) return false;
    coordinates[count] = values.Current().number;
  }
  if (count == 0) return false;
  if (isUsable()) return true;
  context.Warn(point, "a coordinate is not a usable number");
  return false;
}

bool StepGeometry::ReadDirection(std::uint32_t direction, double* components) {
  if (!context.store.ReadTriple(direction, STEP_ATTRIBUTE(Direction, "direction_ratios"), components)) {
    StepValue const list = context.store.Get(direction, STEP_ATTRIBUTE(Direction, "direction_ratios"));
    if (list.kind != StepValue::List) return false;
    std::fill_n(components, 3, 0.0);
    int count = 0;
    for (StepValues values(list); count < 3 && values.Next(); ++count) components[count] = values.Current().number;
  }
  double const length = Length(components);
  if (!(length > 0.0) || !std::isfinite(length)) {
    context.Warn(direction, "the direction has no length");
    return false;
  }
  for (int i = 0; i < 3; ++i) components[i] /= length;
  return true;
}

// Finds what an AXIS2_PLACEMENT_3D refers to in one pass over its bytes. Returns false if that is not all there, or of
// other types.
bool StepGeometry::FindAxes(std::uint32_t placement, Axes& axes) const {
  auto const& store = context.store;
  if (store.SimpleEntityOf(placement) != StepEntity::Axis2Placement3d) return false;
  std::int64_t location = 0;
  std::int64_t z = 0;
  std::int64_t x = 0;
  StepRecordText record = store.RecordOf(placement);
  if (!(record.Skip() && record.Reference(location) && record.Reference(z) && record.Reference(x))) return false;
  axes = {store.Find(location), store.Find(z), store.Find(x)};
  return store.Is(axes.location, StepEntity::CartesianPoint) && store.Is(axes.z, StepEntity::Direction) &&
         store.Is(axes.x, StepEntity::Direction);
}

bool StepGeometry::ReadPlacement(std::uint32_t placement, Placement& result) {
  auto const& store = context.store;
  double origin[3] = {0.0, 0.0, 0.0};
  double x[3];
  double y[3];
  double z[3] = {0.0, 0.0, 1.0};
  double scale = 1.0;
  if (store.Is(placement, StepEntity::Axis2Placement3d)) {
    Axes axes;
    bool const isFound = FindAxes(placement, axes);
    if (!isFound) {
      axes.location = context.Instance(placement, STEP_ATTRIBUTE(Placement, "location"), StepEntity::CartesianPoint);
    }
    if (axes.location == 0 || !ReadPoint(axes.location, origin)) return false;
    if (!isFound) {
      axes.z = context.Instance(placement, STEP_ATTRIBUTE(Axis2Placement3d, "axis"), StepEntity::Direction, true);
    }
    if (axes.z == 0 || !ReadDirection(axes.z, z)) z[0] = z[1] = 0.0, z[2] = 1.0;
    std::uint32_t const reference = isFound
                                        ? axes.x
                                        : context.Instance(placement, STEP_ATTRIBUTE(Axis2Placement3d, "ref_direction"),
                                                           StepEntity::Direction, true);
    if (reference == 0 || !ReadDirection(reference, x) || !Orthogonalize(x, z)) {
      DefaultXAxis(z, x);
      Orthogonalize(x, z);
    }
    Cross(z, x, y);
  } else if (store.Is(placement, StepEntity::Axis2Placement2d)) {
    std::uint32_t const location =
        context.Instance(placement, STEP_ATTRIBUTE(Placement, "location"), StepEntity::CartesianPoint);
    if (location == 0 || !ReadPoint(location, origin)) return false;
    std::uint32_t const reference =
        context.Instance(placement, STEP_ATTRIBUTE(Axis2Placement2d, "ref_direction"), StepEntity::Direction, true);
    if (reference == 0 || !ReadDirection(reference, x) || !Orthogonalize(x, z)) DefaultXAxis(z, x);
    Cross(z, x, y);
  } else if (store.Is(placement, StepEntity::CartesianTransformationOperator)) {
    std::uint32_t const location = context.Instance(
        placement, STEP_ATTRIBUTE(CartesianTransformationOperator, "local_origin"), StepEntity::CartesianPoint);
    if (location == 0 || !ReadPoint(location, origin)) return false;
    scale = context.Number(placement, STEP_ATTRIBUTE(CartesianTransformationOperator, "scale")).value_or(1.0);
    if (scale == 0.0 || !(std::abs(scale) <= kLargestCoordinate)) {
      context.Warn(placement, "the scale is not a usable number");
      return false;
    }
    // ISO 10303-42, base_axis: z first, x orthogonal to it, y completes the frame and keeps the side of axis2.
    std::uint32_t const axis3 = context.Instance(placement, STEP_ATTRIBUTE(CartesianTransformationOperator3d, "axis3"),
                                                 StepEntity::Direction, true);
    bool const hasZ = axis3 != 0 && ReadDirection(axis3, z);
    if (!hasZ) z[0] = z[1] = 0.0, z[2] = 1.0;
    std::uint32_t const axis1 = context.Instance(placement, STEP_ATTRIBUTE(CartesianTransformationOperator, "axis1"),
                                                 StepEntity::Direction, true);
    bool const hasX = axis1 != 0 && ReadDirection(axis1, x);
    std::uint32_t const axis2 = context.Instance(placement, STEP_ATTRIBUTE(CartesianTransformationOperator, "axis2"),
                                                 StepEntity::Direction, true);
    double given[3];
    bool const hasY = axis2 != 0 && ReadDirection(axis2, given);
    if (!hasZ && hasX && hasY) {
      Cross(x, given, z);
      double const length = Length(z);
      if (length > 1e-12) {
        for (double& component : z) component /= length;
      } else {
        z[0] = z[1] = 0.0, z[2] = 1.0;
      }
    }
    if (!hasX || !Orthogonalize(x, z)) {
      DefaultXAxis(z, x);
      Orthogonalize(x, z);
    }
    Cross(z, x, y);
    if (hasY && y[0] * given[0] + y[1] * given[1] + y[2] * given[2] < 0.0) {
      for (double& component : y) component = -component;
    }
  } else {
    context.Warn(placement, "expected a placement or a transformation operator");
    return false;
  }
  result = Placement({scale * x[0], scale * y[0], scale * z[0], origin[0],  //
                      scale * x[1], scale * y[1], scale * z[1], origin[1],  //
                      scale * x[2], scale * y[2], scale * z[2], origin[2]});
  return result.IsFinite();
}

bool StepGeometry::ReadFrame(std::uint32_t position, Curve::Frame& frame) {
  Placement placement;
  if (!ReadPlacement(position, placement)) return false;
  auto const& n = placement.Numbers();
  for (std::size_t i = 0; i < 3; ++i) {
    frame.x[i] = n[4 * i];
    frame.y[i] = n[4 * i + 1];
    frame.origin[i] = n[4 * i + 3];
  }
  return true;
}

// Reads a B_SPLINE_CURVE_WITH_KNOTS that is a simple instance in one pass over its bytes. Returns false for others.
bool StepGeometry::ReadSimpleSpline(std::uint32_t curve, Spline& spline) {
  auto const& store = context.store;
  if (store.SimpleEntityOf(curve) != StepEntity::BSplineCurveWithKnots) return false;
  spline.poles.clear();
  spline.values.clear();
  spline.multiplicities.clear();
  StepRecordText record = store.RecordOf(curve);
  auto const addTo = [](std::vector<double>& numbers) {
    return [&numbers](double number) {
      numbers.push_back(number);
      return true;
    };
  };
  auto const addPole = [&](std::int64_t id) {
    spline.poles.push_back(store.Find(id));
    return store.Is(spline.poles.back(), StepEntity::CartesianPoint);
  };
  return record.Skip() && record.Number(spline.degree) && std::isfinite(spline.degree) && record.References(addPole) &&
         record.Skip() && record.Skip() && record.Skip() && record.Numbers(addTo(spline.multiplicities)) &&
         record.Numbers(addTo(spline.values));
}

bool StepGeometry::ReadKnots(std::uint32_t curve, bool isRead, int degree, Spline& spline) {
  auto const& store = context.store;
  std::size_t const count = spline.points.size() / 3;
  std::vector<double>& knots = spline.knots;
  knots.clear();
  if (store.Is(curve, StepEntity::BSplineCurveWithKnots)) {
    if (!isRead) {
      spline.values = context.Numbers(curve, STEP_ATTRIBUTE(BSplineCurveWithKnots, "knots"));
      spline.multiplicities = context.Numbers(curve, STEP_ATTRIBUTE(BSplineCurveWithKnots, "knot_multiplicities"));
    }
    std::vector<double> const& values = spline.values;
    std::vector<double> const& multiplicities = spline.multiplicities;
    if (values.size() != multiplicities.size()) return false;
    for (std::size_t i = 0; i < values.size(); ++i) {
      // More knots than the control points need are refused before they take memory.
      if (!(multiplicities[i] >= 1.0) || multiplicities[i] > kKnotLimit) return false;
      auto const times = static_cast<std::size_t>(multiplicities[i]);
      if (knots.size() + times > count + static_cast<std::size_t>(degree) + 1) return false;
      knots.insert(knots.end(), times, values[i]);
    }
    return true;
  }
  if (degree <= 0 || count <= static_cast<std::size_t>(degree)) return false;
  // ISO 10303-42, default_b_spline_knots: the knots of the forms without explicit ones.
  auto const order = static_cast<std::size_t>(degree) + 1;
  if (store.Is(curve, StepEntity::UniformCurve)) {
    for (std::size_t i = 0; i < count + order; ++i) knots.push_back(static_cast<double>(i) - degree);
  } else if (store.Is(curve, StepEntity::BezierCurve)) {
    if ((count - 1) % static_cast<std::size_t>(degree) != 0) return false;
    knots.assign(order, 0.0);
    std::size_t const spans = (count - 1) / static_cast<std::size_t>(degree);
    for (std::size_t span = 1; span < spans; ++span) {
      knots.insert(knots.end(), static_cast<std::size_t>(degree), static_cast<double>(span));
    }
    knots.insert(knots.end(), order, static_cast<double>(spans));
  } else {
    knots.assign(order, 0.0);
    for (std::size_t i = 1; i + order <= count; ++i) knots.push_back(static_cast<double>(i));
    knots.insert(knots.end(), order, static_cast<double>(count - static_cast<std::size_t>(degree)));
  }
  return true;
}

std::unique_ptr<Curve> StepGeometry::ReadBSpline(std::uint32_t curve) {
  auto const& store = context.store;
  Spline& spline = lastSpline;
  bool const isRead = ReadSimpleSpline(curve, spline);
  if (!isRead) {
    spline.degree = context.Number(curve, STEP_ATTRIBUTE(BSplineCurve, "degree")).value_or(0.0);
    spline.poles =
        context.Instances(curve, STEP_ATTRIBUTE(BSplineCurve, "control_points_list"), StepEntity::CartesianPoint);
  }
  int const degree = spline.degree >= 1.0 && spline.degree <= 25.0 ? static_cast<int>(spline.degree) : 0;
  spline.points.clear();
  hull = ModelBox();
  for (std::uint32_t const pole : spline.poles) {
    double point[3];
    if (!ReadPoint(pole, point)) return nullptr;
    spline.points.insert(spline.points.end(), point, point + 3);
    hull.Extend(point);
  }
  if (!Spend(spline.points.size()) || !ReadKnots(curve, isRead, degree, spline)) return nullptr;
  std::vector<double> weights;
  if (store.Is(curve, StepEntity::RationalBSplineCurve)) {
    weights = context.Numbers(curve, STEP_ATTRIBUTE(RationalBSplineCurve, "weights_data"));
  }
  if (mayLeaveOut && leftOut->Contains(hull)) {
    isLeftOut = Curve::IsBSpline(degree, spline.points, spline.knots, weights);
    return nullptr;
  }
  return Curve::BSpline(degree, spline.points, spline.knots, weights);
}

std::unique_ptr<Curve> StepGeometry::ReadEllipse(std::uint32_t curve) {
  auto const& store = context.store;
  bool const isCircle = store.Is(curve, StepEntity::Circle);
  std::int64_t position = 0;
  double radii[2] = {0.0, 0.0};
  Curve::Frame frame{};
  // A simple instance is read in one pass over its bytes.
  StepRecordText record = store.RecordOf(curve);
  bool const isRead = record.Skip() && record.Reference(position) && record.Number(radii[0]) &&
                      (isCircle || record.Number(radii[1])) && std::isfinite(radii[0]) && std::isfinite(radii[1]);
  std::uint32_t placement = isRead ? store.Find(position) : 0;
  if (!store.Is(placement, StepEntity::Placement)) {
    placement = context.Instance(curve, STEP_ATTRIBUTE(Conic, "position"), StepEntity::Placement);
  }
  if (placement == 0 || !ReadFrame(placement, frame)) return nullptr;
  auto const number = [&](StepAttribute const& attribute) { return context.Number(curve, attribute).value_or(0.0); };
  if (isCircle) {
    double const radius = isRead ? radii[0] : number(STEP_ATTRIBUTE(Circle, "radius"));
    return Curve::Ellipse(frame, radius, radius);
  }
  if (!isRead) {
    radii[0] = number(STEP_ATTRIBUTE(Ellipse, "semi_axis_1"));
    radii[1] = number(STEP_ATTRIBUTE(Ellipse, "semi_axis_2"));
  }
  return Curve::Ellipse(frame, radii[0], radii[1]);
}

std::unique_ptr<Curve> StepGeometry::ReadBasis(std::uint32_t curve, int depth) {
  auto const& store = context.store;
  if (depth > kDepthLimit) return nullptr;
  if (store.Is(curve, StepEntity::Line)) {
    std::uint32_t const start = context.Instance(curve, STEP_ATTRIBUTE(Line, "pnt"), StepEntity::CartesianPoint);
    std::uint32_t const vector = context.Instance(curve, STEP_ATTRIBUTE(Line, "dir"), StepEntity::Vector);
    if (start == 0 || vector == 0) return nullptr;
    std::uint32_t const orientation =
        context.Instance(vector, STEP_ATTRIBUTE(Vector, "orientation"), StepEntity::Direction);
    double origin[3];
    double direction[3];
    if (orientation == 0 || !ReadPoint(start, origin) || !ReadDirection(orientation, direction)) return nullptr;
    double const magnitude = context.Number(vector, STEP_ATTRIBUTE(Vector, "magnitude")).value_or(1.0);
    for (double& component : direction) component *= magnitude == 0.0 ? 1.0 : magnitude;
    return Curve::Line(origin, direction);
  }
  if (store.Is(curve, StepEntity::Circle) || store.Is(curve, StepEntity::Ellipse)) return ReadEllipse(curve);
  if (store.Is(curve, StepEntity::Conic)) {
    Curve::Frame frame{};
    std::uint32_t const position = context.Instance(curve, STEP_ATTRIBUTE(Conic, "position"), StepEntity::Placement);
    if (position == 0 || !ReadFrame(position, frame)) return nullptr;
    auto const number = [&](StepAttribute const& attribute) { return context.Number(curve, attribute).value_or(0.0); };
    if (store.Is(curve, StepEntity::Hyperbola)) {
      return Curve::Hyperbola(frame, number(STEP_ATTRIBUTE(Hyperbola, "semi_axis")),
                              number(STEP_ATTRIBUTE(Hyperbola, "semi_imag_axis")));
    }
    return Curve::Parabola(frame, number(STEP_ATTRIBUTE(Parabola, "focal_dist")));
  }
  if (store.Is(curve, StepEntity::BSplineCurve)) return ReadBSpline(curve);
  if (store.Is(curve, StepEntity::Polyline)) {
    std::vector<double> corners;
    for (std::uint32_t const corner :
         context.Instances(curve, STEP_ATTRIBUTE(Polyline, "points"), StepEntity::CartesianPoint)) {
      double point[3];
      if (ReadPoint(corner, point)) corners.insert(corners.end(), point, point + 3);
    }
    if (!Spend(corners.size())) return nullptr;
    return Curve::Polyline(std::move(corners));
  }
  if (store.Is(curve, StepEntity::SurfaceCurve)) {
    std::uint32_t const spatial = context.Instance(curve, STEP_ATTRIBUTE(SurfaceCurve, "curve_3d"), StepEntity::Curve);
    return spatial == 0 ? nullptr : ReadBasis(spatial, depth + 1);
  }
  if (store.Is(curve, StepEntity::OffsetCurve3d)) {
    std::uint32_t const basis =
        context.Instance(curve, STEP_ATTRIBUTE(OffsetCurve3d, "basis_curve"), StepEntity::Curve);
    std::uint32_t const reference =
        context.Instance(curve, STEP_ATTRIBUTE(OffsetCurve3d, "ref_direction"), StepEntity::Direction);
    double direction[3];
    if (basis == 0 || reference == 0 || !ReadDirection(reference, direction)) return nullptr;
    double const distance = context.Number(curve, STEP_ATTRIBUTE(OffsetCurve3d, "distance")).value_or(0.0);
    mayLeaveOut = false;
    auto spatial = ReadBasis(basis, depth + 1);
    hull = ModelBox();
    return Curve::Offset(std::move(spatial), distance, direction);
  }
  return nullptr;
}

StepGeometry::Trim StepGeometry::ReadTrim(std::uint32_t curve, StepAttribute const& attribute) {
  Trim trim;
  StepValue const list = context.store.Get(curve, attribute);
  if (list.kind != StepValue::List) return trim;
  for (StepValues values(list); values.Next();) {
    StepValue const& value = values.Current();
    if (value.kind == StepValue::Reference) {
      trim.hasPoint = ReadPoint(value.reference, trim.point);
      if (!context.store.Is(value.reference, StepEntity::CartesianPoint)) {
        context.WarnOfType(curve, attribute, StepEntity::CartesianPoint, value);
      }
    } else {
      trim.parameter = NumberOf(value);
    }
  }
  return trim;
}

// A trimming is a point, a parameter, or both. Points are preferred, since the parameters of conics depend on units,
// except that a closed curve needs the parameters: its points coincide.
bool StepGeometry::ReadTrims(std::uint32_t curve, double radians, Piece& piece) {
  Trim const first = ReadTrim(curve, STEP_ATTRIBUTE(TrimmedCurve, "trim_1"));
  Trim const last = ReadTrim(curve, STEP_ATTRIBUTE(TrimmedCurve, "trim_2"));
  bool const hasPoints = first.hasPoint && last.hasPoint;
  bool const hasParameters = first.parameter.has_value() && last.parameter.has_value();
  if (hasPoints && !(hasParameters && IsSame(first.point, last.point))) {
    piece.first = piece.curve->ParameterOf(first.point);
    piece.last = piece.curve->ParameterOf(last.point);
    return true;
  }
  double const factor = piece.curve->Period() > 0.0 ? radians : 1.0;
  auto const parameterOf = [&](Trim const& trim, double& parameter) {
    if (trim.parameter.has_value()) {
      parameter = *trim.parameter * factor;
    } else if (trim.hasPoint) {
      parameter = piece.curve->ParameterOf(trim.point);
    } else {
      return false;
    }
    return true;
  };
  if (parameterOf(first, piece.first) && parameterOf(last, piece.last)) return true;
  context.Warn(curve, "the curve is trimmed by neither points nor parameters");
  return false;
}

bool StepGeometry::Spend(std::size_t steps) {
  long const limit = kEffortLimit + kEffortPerInstance * static_cast<long>(context.store.InstanceCount());
  if (effort > limit) return false;
  effort += static_cast<long>(steps);
  if (effort > limit)
    context.Warn(std::string("curves"), "there are too many uses of the same points; the rest is skipped");
  return effort <= limit;
}

bool StepGeometry::ReadPieces(std::uint32_t curve, double const* from, double const* to, bool forward, double radians,
                              int depth, std::vector<Piece>& pieces) {
  auto const& store = context.store;
  if (depth > kDepthLimit) {
    context.Warn(curve, "the curve refers to itself");
    return false;
  }
  if (!Spend(1)) return false;
  if (store.Is(curve, StepEntity::Pcurve)) return false;
  if (store.Is(curve, StepEntity::SurfaceCurve)) {
    std::uint32_t const spatial = context.Instance(curve, STEP_ATTRIBUTE(SurfaceCurve, "curve_3d"), StepEntity::Curve);
    return spatial != 0 && ReadPieces(spatial, from, to, forward, radians, depth + 1, pieces);
  }
  if (store.Is(curve, StepEntity::CompositeCurve)) {
    std::vector<Piece> parts;
    for (std::uint32_t const segment :
         context.Instances(curve, STEP_ATTRIBUTE(CompositeCurve, "segments"), StepEntity::CompositeCurveSegment)) {
      std::uint32_t const parent =
          context.Instance(segment, STEP_ATTRIBUTE(CompositeCurveSegment, "parent_curve"), StepEntity::Curve);
      bool const isForward = context.Flag(segment, STEP_ATTRIBUTE(CompositeCurveSegment, "same_sense"));
      if (parent != 0) ReadPieces(parent, nullptr, nullptr, isForward, radians, depth + 1, parts);
    }
    if (!forward) {
      std::reverse(parts.begin(), parts.end());
      for (Piece& part : parts) std::swap(part.first, part.last);
    }
    for (Piece& part : parts) pieces.push_back(std::move(part));
    return !parts.empty();
  }
  if (store.Is(curve, StepEntity::CurveReplica)) {
    std::uint32_t const parent =
        context.Instance(curve, STEP_ATTRIBUTE(CurveReplica, "parent_curve"), StepEntity::Curve);
    std::uint32_t const transformation = context.Instance(curve, STEP_ATTRIBUTE(CurveReplica, "transformation"),
                                                          StepEntity::CartesianTransformationOperator);
    Placement placement;
    Placement inverse;
    if (parent == 0 || transformation == 0 || !ReadPlacement(transformation, placement) || !placement.Invert(inverse)) {
      return false;
    }
    double ends[2][3];
    if (from != nullptr && to != nullptr) {
      std::copy_n(from, 3, ends[0]);
      std::copy_n(to, 3, ends[1]);
      inverse.Apply(ends[0]);
      inverse.Apply(ends[1]);
    }
    leftOut = nullptr;
    std::vector<Piece> parts;
    if (!ReadPieces(parent, from == nullptr ? nullptr : ends[0], to == nullptr ? nullptr : ends[1], forward, radians,
                    depth + 1, parts)) {
      return false;
    }
    for (Piece& part : parts) {
      std::vector<double> corners;
      part.curve->Sample(part.first, part.last, tolerance / std::cbrt(std::abs(placement.Determinant())), corners);
      for (std::size_t i = 0; i + 3 <= corners.size(); i += 3) placement.Apply(&corners[i]);
      Piece mapped;
      mapped.curve = Curve::Polyline(std::move(corners));
      if (mapped.curve == nullptr) continue;
      mapped.last = mapped.curve->Last();
      pieces.push_back(std::move(mapped));
    }
    return true;
  }

  Piece piece;
  std::uint32_t basis = curve;
  bool isTrimmed = false;
  bool sense = true;
  if (store.Is(curve, StepEntity::TrimmedCurve)) {
    basis = context.Instance(curve, STEP_ATTRIBUTE(TrimmedCurve, "basis_curve"), StepEntity::Curve);
    if (basis == 0) return false;
    if (store.Is(basis, StepEntity::CompositeCurve) || store.Is(basis, StepEntity::TrimmedCurve)) {
      return ReadPieces(basis, from, to, forward, radians, depth + 1, pieces);
    }
    isTrimmed = true;
    sense = context.Flag(curve, STEP_ATTRIBUTE(TrimmedCurve, "sense_agreement"));
  }
  hull = ModelBox();
  mayLeaveOut = leftOut != nullptr && !isTrimmed;
  isLeftOut = false;
  piece.curve = ReadBasis(basis, depth);
  piece.hull = hull;
  if (isLeftOut) return true;
  if (piece.curve == nullptr) {
    context.Warn(basis, "the curve is damaged or of an unknown type");
    return false;
  }
  double const period = piece.curve->Period();
  piece.first = piece.curve->First();
  piece.last = piece.curve->Last();
  bool isOpen = false;  // the range comes from two points and not from the curve alone
  if (isTrimmed) {
    if (!ReadTrims(curve, radians, piece)) return false;
    isOpen = true;
  } else if (from != nullptr && to != nullptr) {
    // An edge whose vertices coincide is a whole turn of a closed curve.
    bool const isClosed = IsSame(from, to);
    if (!isClosed || period == 0.0) {
      double const begin = piece.curve->ParameterOf(forward ? from : to);
      double const end = piece.curve->ParameterOf(forward ? to : from);
      double const width = piece.last - piece.first;
      if (!(isClosed && width > 0.0)) {
        piece.first = begin;
        piece.last = end;
      }
      // A closed B-spline passes its seam at the end of the range.
      if (period == 0.0 && width > 0.0 && piece.first > piece.last) {
        double start[3];
        piece.curve->Evaluate(piece.curve->First(), start);
        if (IsSame(start, forward ? to : from)) piece.last = piece.curve->Last();
      }
      isOpen = true;
    } else {
      double const begin = piece.curve->ParameterOf(from);
      piece.first = begin;
      piece.last = begin + period;
    }
  }
  if (isOpen && period > 0.0) {
    if (sense && piece.last <= piece.first) piece.last += period;
    if (!sense && piece.first <= piece.last) piece.first += period;
  }
  if (piece.first == piece.last && piece.curve->First() == piece.curve->Last() && !isOpen) return false;
  if (!forward) std::swap(piece.first, piece.last);
  pieces.push_back(std::move(piece));
  return true;
}

std::vector<StepGeometry::Piece> StepGeometry::Pieces(std::uint32_t curve, double const* from, double const* to,
                                                      bool forward, double radians, double chordError,
                                                      ModelBox const* covered) {
  tolerance = chordError;
  leftOut = covered;
  std::vector<Piece> pieces;
  if (!ReadPieces(curve, from, to, forward, radians, 0, pieces)) pieces.clear();
  return pieces;
}
