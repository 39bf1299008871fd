#include "Curve.h"

#include <algorithm>
#include <cmath>
#include <utility>

// Sampling is adaptive bisection. An interval is replaced by its chord if the points at one half and at two unequal
// other parameters are within the tolerance of the chord; otherwise it is halved. Breaks (corners, knots) always bound
// intervals, and each interval between breaks begins with a few pieces, so that a symmetric wave is not taken for a
// line. The depth is bounded, since a curve of damaged numbers may never become straight.
//
// B-splines are evaluated by de Boor's algorithm, rational ones in homogeneous coordinates (L. Piegl and W. Tiller, The
// NURBS Book, 2nd edition, sections 3.2 and 4.2).

namespace {

constexpr int kDepthLimit = 12;
constexpr int kFirstPieces = 4;
constexpr double kTwoPi = 6.283185307179586476925286766559;

bool AreFinite(double const* numbers, std::size_t count) {
  return std::all_of(numbers, numbers + count, [](double number) { return std::isfinite(number); });
}

double Dot(double const* a, double const* b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

double DistanceToChord(double const* point, double const* from, double const* to) {
  double const chord[3] = {to[0] - from[0], to[1] - from[1], to[2] - from[2]};
  double const offset[3] = {point[0] - from[0], point[1] - from[1], point[2] - from[2]};
  double const square = Dot(chord, chord);
  double const t = square > 0.0 ? std::clamp(Dot(offset, chord) / square, 0.0, 1.0) : 0.0;
  double const rest[3] = {offset[0] - t * chord[0], offset[1] - t * chord[1], offset[2] - t * chord[2]};
  return std::sqrt(Dot(rest, rest));
}

class LineCurve final : public Curve {
 public:
  LineCurve(double const* start, double const* vector) {
    std::copy_n(start, 3, origin);
    std::copy_n(vector, 3, direction);
  }
  void Evaluate(double t, double* point) const override {
    for (int i = 0; i < 3; ++i) point[i] = origin[i] + t * direction[i];
  }
  double ParameterOf(double const* point) const override {
    double const offset[3] = {point[0] - origin[0], point[1] - origin[1], point[2] - origin[2]};
    return Dot(offset, direction) / Dot(direction, direction);
  }
  double First() const override { return 0.0; }
  double Last() const override { return 0.0; }
  bool IsStraight() const override { return true; }

 private:
  double origin[3];
  double direction[3];
};

// Conics in their frame.
class ConicCurve : public Curve {
 public:
  ConicCurve(Frame const& conicFrame, double first, double second) : frame(conicFrame), a(first), b(second) {}

 protected:
  void At(double x, double y, double* point) const {
    for (int i = 0; i < 3; ++i) point[i] = frame.origin[i] + x * frame.x[i] + y * frame.y[i];
  }
  double LocalX(double const* point) const { return Local(point, frame.x); }
  double LocalY(double const* point) const { return Local(point, frame.y); }

  Frame const frame;
  double const a;
  double const b;

 private:
  double Local(double const* point, double const* axis) const {
    double const offset[3] = {point[0] - frame.origin[0], point[1] - frame.origin[1], point[2] - frame.origin[2]};
    return Dot(offset, axis);
  }
};

class EllipseCurve final : public ConicCurve {
 public:
  using ConicCurve::ConicCurve;
  void Evaluate(double t, double* point) const override { At(a * std::cos(t), b * std::sin(t), point); }
  double ParameterOf(double const* point) const override {
    double const angle = std::atan2(LocalY(point) / b, LocalX(point) / a);
    return angle < 0.0 ? angle + kTwoPi : angle;
  }
  double First() const override { return 0.0; }
  double Last() const override { return kTwoPi; }
  double Period() const override { return kTwoPi; }
  bool AsArc(Frame& scaled) const override {
    scaled = frame;
    for (int i = 0; i < 3; ++i) {
      scaled.x[i] *= a;
      scaled.y[i] *= b;
    }
    return true;
  }
};

class HyperbolaCurve final : public ConicCurve {
 public:
  using ConicCurve::ConicCurve;
  void Evaluate(double t, double* point) const override { At(a * std::cosh(t), b * std::sinh(t), point); }
  double ParameterOf(double const* point) const override { return std::asinh(LocalY(point) / b); }
  double First() const override { return 0.0; }
  double Last() const override { return 0.0; }
};

class ParabolaCurve final : public ConicCurve {
 public:
  ParabolaCurve(Frame const& conicFrame, double focus) : ConicCurve(conicFrame, focus, focus) {}
  void Evaluate(double t, double* point) const override { At(a * t * t, 2.0 * a * t, point); }
  double ParameterOf(double const* point) const override { return LocalY(point) / (2.0 * a); }
  double First() const override { return 0.0; }
  double Last() const override { return 0.0; }
};

// Returns the parameter of the closest of many samples, improved by golden section search between its neighbours.
double ClosestParameter(Curve const& curve, double first, double last, int samples, double const* point) {
  auto const distance = [&](double t) {
    double at[3];
    curve.Evaluate(t, at);
    double const offset[3] = {at[0] - point[0], at[1] - point[1], at[2] - point[2]};
    return Dot(offset, offset);
  };
  // Most points are an end.
  double const size = 1.0 + std::abs(point[0]) + std::abs(point[1]) + std::abs(point[2]);
  for (double const end : {first, last}) {
    if (distance(end) <= 1e-20 * size * size) return end;
  }
  int best = 0;
  double smallest = distance(first);
  for (int i = 1; i <= samples; ++i) {
    double const here = distance(first + (last - first) * i / samples);
    if (here < smallest) {
      smallest = here;
      best = i;
    }
  }
  double low = first + (last - first) * std::max(best - 1, 0) / samples;
  double high = first + (last - first) * std::min(best + 1, samples) / samples;
  constexpr double kGolden = 0.6180339887498949;
  for (int i = 0; i < 60; ++i) {
    double const left = high - kGolden * (high - low);
    double const right = low + kGolden * (high - low);
    if (distance(left) < distance(right)) {
      high = right;
    } else {
      low = left;
    }
  }
  double const found = 0.5 * (low + high);
  // The ends are exact where the point is one of them.
  for (double const end : {first, last}) {
    if (distance(end) <= distance(found)) return end;
  }
  return found;
}

class BSplineCurve final : public Curve {
 public:
  BSplineCurve(int curveDegree, std::vector<double> controlPoints, std::vector<double> knotVector,
               std::vector<double> const& weights)
      : degree(static_cast<std::size_t>(curveDegree)), knots(std::move(knotVector)) {
    std::size_t const count = controlPoints.size() / 3;
    poles.reserve(4 * count);
    for (std::size_t i = 0; i < count; ++i) {
      double const weight = weights.empty() ? 1.0 : weights[i];
      for (std::size_t k = 0; k < 3; ++k) poles.push_back(weight * controlPoints[3 * i + k]);
      poles.push_back(weight);
    }
  }

  void Evaluate(double t, double* point) const override {
    t = std::clamp(t, First(), Last());
    // The span k with knots[k] <= t < knots[k + 1]; the last one includes its end.
    auto const end = knots.end() - static_cast<std::ptrdiff_t>(degree) - 1;
    auto const upper = std::upper_bound(knots.begin() + static_cast<std::ptrdiff_t>(degree), end, t);
    std::size_t const span = static_cast<std::size_t>(upper - knots.begin()) - 1;
    double stack[4 * 26];
    for (std::size_t j = 0; j <= degree; ++j) std::copy_n(&poles[4 * (span - degree + j)], 4, stack + 4 * j);
    for (std::size_t r = 1; r <= degree; ++r) {
      for (std::size_t j = degree; j >= r; --j) {
        double const low = knots[span - degree + j];
        double const width = knots[span + j + 1 - r] - low;
        double const alpha = width > 0.0 ? (t - low) / width : 0.0;
        for (std::size_t k = 0; k < 4; ++k) {
          stack[4 * j + k] = (1.0 - alpha) * stack[4 * (j - 1) + k] + alpha * stack[4 * j + k];
        }
      }
    }
    double const* const result = stack + 4 * degree;
    for (int k = 0; k < 3; ++k) point[k] = result[k] / result[3];
  }

  double ParameterOf(double const* point) const override {
    int const samples = static_cast<int>(std::min<std::size_t>(4 * poles.size(), 4096));
    return ClosestParameter(*this, First(), Last(), samples, point);
  }
  bool IsPiecewiseStraight() const override { return degree == 1; }
  double First() const override { return knots[degree]; }
  double Last() const override { return knots[knots.size() - degree - 1]; }
  std::vector<double> Breaks(double first, double last) const override {
    std::vector<double> breaks;
    for (double const knot : knots) {
      if (knot > first && knot < last && (breaks.empty() || knot > breaks.back())) breaks.push_back(knot);
    }
    return breaks;
  }

  static constexpr int kDegreeLimit = 25;

 private:
  std::size_t degree;
  std::vector<double> poles;  // homogeneous: w x, w y, w z, w
  std::vector<double> knots;
};

class PolylineCurve final : public Curve {
 public:
  explicit PolylineCurve(std::vector<double> corners) : points(std::move(corners)) {}
  void Evaluate(double t, double* point) const override {
    t = std::clamp(t, 0.0, Last());
    auto const index = std::min(static_cast<std::size_t>(t), points.size() / 3 - 2);
    double const rest = t - static_cast<double>(index);
    for (std::size_t k = 0; k < 3; ++k) {
      point[k] = (1.0 - rest) * points[3 * index + k] + rest * points[3 * index + 3 + k];
    }
  }
  double ParameterOf(double const* point) const override {
    double best = 0.0;
    double smallest = HUGE_VAL;
    for (std::size_t i = 0; i + 6 <= points.size(); i += 3) {
      double const* const from = &points[i];
      double const chord[3] = {from[3] - from[0], from[4] - from[1], from[5] - from[2]};
      double const offset[3] = {point[0] - from[0], point[1] - from[1], point[2] - from[2]};
      double const square = Dot(chord, chord);
      double const t = square > 0.0 ? std::clamp(Dot(offset, chord) / square, 0.0, 1.0) : 0.0;
      double const distance = DistanceToChord(point, from, from + 3);
      if (distance < smallest) {
        smallest = distance;
        std::size_t const index = i / 3;
        best = static_cast<double>(index) + t;
      }
    }
    return best;
  }
  double First() const override { return 0.0; }
  double Last() const override {
    std::size_t const segments = points.size() / 3 - 1;
    return static_cast<double>(segments);
  }
  bool IsPiecewiseStraight() const override { return true; }
  std::vector<double> Breaks(double first, double last) const override {
    std::vector<double> breaks;
    for (double t = std::floor(first) + 1.0; t < last; t += 1.0) breaks.push_back(t);
    return breaks;
  }

 private:
  std::vector<double> points;
};

class OffsetCurve final : public Curve {
 public:
  OffsetCurve(std::unique_ptr<Curve> basisCurve, double offset, double const* direction)
      : basis(std::move(basisCurve)), distance(offset) {
    std::copy_n(direction, 3, reference);
  }
  void Evaluate(double t, double* point) const override {
    basis->Evaluate(t, point);
    // The tangent from a central difference.
    double const range = std::abs(basis->Last() - basis->First());
    double const step = 1e-6 * (range > 0.0 ? range : 1.0);
    double before[3];
    double after[3];
    basis->Evaluate(t - step, before);
    basis->Evaluate(t + step, after);
    double const tangent[3] = {after[0] - before[0], after[1] - before[1], after[2] - before[2]};
    double const side[3] = {reference[1] * tangent[2] - reference[2] * tangent[1],
                            reference[2] * tangent[0] - reference[0] * tangent[2],
                            reference[0] * tangent[1] - reference[1] * tangent[0]};
    double const length = std::sqrt(Dot(side, side));
    if (!(length > 0.0)) return;
    for (int k = 0; k < 3; ++k) point[k] += distance * side[k] / length;
  }
  double ParameterOf(double const* point) const override {
    double const first = First();
    double const last = Last();
    return last > first ? ClosestParameter(*this, first, last, 256, point) : basis->ParameterOf(point);
  }
  double First() const override { return basis->First(); }
  double Last() const override { return basis->Last(); }
  double Period() const override { return basis->Period(); }
  std::vector<double> Breaks(double first, double last) const override { return basis->Breaks(first, last); }

 private:
  std::unique_ptr<Curve> basis;
  double distance;
  double reference[3];
};

bool IsUsable(Curve::Frame const& frame) {
  return AreFinite(frame.origin, 3) && AreFinite(frame.x, 3) && AreFinite(frame.y, 3);
}

template <class Conic>
std::unique_ptr<Curve> MakeConic(Curve::Frame const& frame, double a, double b) {
  if (!IsUsable(frame) || !(a > 0.0) || !(b > 0.0) || !std::isfinite(a) || !std::isfinite(b)) return nullptr;
  return std::make_unique<Conic>(frame, a, b);
}

}  // namespace

std::unique_ptr<Curve> Curve::Line(double const* origin, double const* direction) {
  double const square = Dot(direction, direction);
  if (!AreFinite(origin, 3) || !std::isfinite(square) || !(square > 0.0)) return nullptr;
  return std::make_unique<LineCurve>(origin, direction);
}

std::unique_ptr<Curve> Curve::Ellipse(Frame const& frame, double a, double b) {
  return MakeConic<EllipseCurve>(frame, a, b);
}

std::unique_ptr<Curve> Curve::Hyperbola(Frame const& frame, double a, double b) {
  return MakeConic<HyperbolaCurve>(frame, a, b);
}

std::unique_ptr<Curve> Curve::Parabola(Frame const& frame, double focus) {
  if (!IsUsable(frame) || !(focus > 0.0) || !std::isfinite(focus)) return nullptr;
  return std::make_unique<ParabolaCurve>(frame, focus);
}

bool Curve::IsBSpline(int degree, std::vector<double> const& poles, std::vector<double> const& knots,
                      std::vector<double> const& weights) {
  std::size_t const count = poles.size() / 3;
  if (degree < 1 || degree > BSplineCurve::kDegreeLimit || count < static_cast<std::size_t>(degree) + 1) return false;
  if (knots.size() != count + static_cast<std::size_t>(degree) + 1 || !std::is_sorted(knots.begin(), knots.end())) {
    return false;
  }
  if (!AreFinite(poles.data(), poles.size()) || !AreFinite(knots.data(), knots.size())) return false;
  if (!weights.empty()) {
    bool const isValid = weights.size() == count && std::all_of(weights.begin(), weights.end(), [](double weight) {
                           return weight > 0.0 && std::isfinite(weight);
                         });
    if (!isValid) return false;
  }
  return knots[static_cast<std::size_t>(degree)] < knots[count];
}

std::unique_ptr<Curve> Curve::BSpline(int degree, std::vector<double> poles, std::vector<double> knots,
                                      std::vector<double> const& weights) {
  if (!IsBSpline(degree, poles, knots, weights)) return nullptr;
  return std::make_unique<BSplineCurve>(degree, std::move(poles), std::move(knots), weights);
}

std::unique_ptr<Curve> Curve::Polyline(std::vector<double> points) {
  if (points.size() < 6 || points.size() % 3 != 0 || !AreFinite(points.data(), points.size())) return nullptr;
  return std::make_unique<PolylineCurve>(std::move(points));
}

std::unique_ptr<Curve> Curve::Offset(std::unique_ptr<Curve> basis, double distance, double const* reference) {
  double const square = Dot(reference, reference);
  if (basis == nullptr || !std::isfinite(distance) || !std::isfinite(square) || !(square > 0.0)) return nullptr;
  return std::make_unique<OffsetCurve>(std::move(basis), distance, reference);
}

std::vector<double> Curve::Breaks(double /*first*/, double /*last*/) const {
  return {};
}

void Curve::Sample(double first, double last, double chordError, std::vector<double>& points) const {
  double point[3];
  Evaluate(first, point);
  points.insert(points.end(), point, point + 3);
  if (!std::isfinite(first) || !std::isfinite(last) || first == last) return;

  std::vector<double> stops = Breaks(std::min(first, last), std::max(first, last));
  if (first > last) std::reverse(stops.begin(), stops.end());
  stops.push_back(last);
  if (IsPiecewiseStraight()) {
    for (double const stop : stops) {
      Evaluate(stop, point);
      points.insert(points.end(), point, point + 3);
    }
    return;
  }

  struct Interval {
    double end;
    int depth;
  };
  std::vector<Interval> pending;
  double start = first;
  for (double const stop : stops) {
    int const pieces = stops.size() > 16 ? 1 : kFirstPieces;
    double const width = (stop - start) / pieces;
    for (int i = pieces; i > 0; --i) pending.push_back({i == pieces ? stop : start + i * width, 0});
    while (!pending.empty()) {
      Interval const interval = pending.back();
      double const* const from = &points[points.size() - 3];
      double to[3];
      Evaluate(interval.end, to);
      double worst = 0.0;
      for (double const share : {0.5, 0.29, 0.77}) {
        Evaluate(start + share * (interval.end - start), point);
        worst = std::max(worst, DistanceToChord(point, from, to));
      }
      double const middle = 0.5 * (start + interval.end);
      if (worst > chordError && interval.depth < kDepthLimit) {
        pending.back().depth = interval.depth + 1;
        pending.push_back({middle, interval.depth + 1});
        continue;
      }
      points.insert(points.end(), to, to + 3);
      start = interval.end;
      pending.pop_back();
    }
  }
}
