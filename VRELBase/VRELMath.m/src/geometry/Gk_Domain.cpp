#include "Gk_Domain.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "VRELStreamFormatter.h"

namespace {

// Number of periods that principalParam adds or subtracts one by one.
constexpr int kMaxSinglePeriods = 1 << 24;

// Adds `step` to `v` until `isDone` returns true, at most kMaxSinglePeriods times, and returns whether it got there.
// Stops early if the step is lost in rounding. A distance of more than twice that many steps is not even tried:
// rounding enlarges a step that has an effect to at most twice its size.
template <class Condition>
bool Step(double& v, double distance, double step, Condition const& isDone) noexcept {
  if (!(distance / std::fabs(step) <= 2.0 * kMaxSinglePeriods)) return false;
  for (int i = 0; i < kMaxSinglePeriods && !isDone(v); ++i) {
    double const next = v + step;
    if (next == v) return false;
    v = next;
  }
  return isDone(v);
}

// Reduces `v` in one step. As with single periods, a value from above may end at `high`, and a value from below ends at
// `low` as soon as it is there within Gk_Def::FuzzReal. Takes the remainders of both `v` and `low` first, because their
// difference may overflow.
double ReduceAtOnce(double v, double low, double high) noexcept {
  double const period = high - low;
  double const rest = std::fmod(std::fmod(v, period) - std::fmod(low, period), period);
  if (v > high) return std::min(low + (rest > 0.0 ? rest : rest + period), high);
  double const offset = rest < 0.0 ? rest + period : rest;
  return Gk_Func::lesseq(period, offset, Gk_Def::FuzzReal) ? low : low + offset;
}

}  // namespace

bool Gk_Domain::expand(double d) noexcept {
  if (isLowBounded()) lowEnd -= d;
  if (isHighBounded()) highEnd += d;
  return true;
}

bool Gk_Domain::isInside(double v) const noexcept {
  if (isLowBounded() && (isLow(v) || !(v > lowEnd))) return false;
  return !isHighBounded() || (!isHigh(v) && v < highEnd);
}

bool Gk_Domain::isSame(Gk_Domain const& other, double within) const noexcept {
  if (ends != other.ends) return false;
  double const allowed = within == -1.0 ? tolerance : within;
  if (isLowBounded() && !Gk_Func::equal(lowEnd, other.lowEnd, allowed)) return false;
  return !isHighBounded() || Gk_Func::equal(highEnd, other.highEnd, allowed);
}

double Gk_Domain::stick(double v) const noexcept {
  if (isLow(v) || v < lowEnd) return lowEnd;
  if (isHigh(v) || v > highEnd) return highEnd;
  return v;
}

// Reduction of a periodic parameter. The periods are added one by one, because the rounding error of each addition is
// part of the result; only where that takes too long, or never ends, is the remainder of the division used.
double Gk_Domain::principalParam(double v) const noexcept {
  if (!isFinite() || std::isnan(v)) return v;
  auto const isNotAbove = [this](double x) { return !(x > highEnd); };
  auto const isNotBelow = [this](double x) { return Gk_Func::lesseq(lowEnd, x, Gk_Def::FuzzReal); };
  if (isNotAbove(v) && isNotBelow(v)) return lowEnd > v ? lowEnd : v;
  double const period = length();
  bool const isPeriodic = period > 0.0 && std::isfinite(period) && std::isfinite(v);
  if (!isPeriodic) return lowEnd;

  double const given = v;
  bool const isReduced = Step(v, v - highEnd, -period, isNotAbove) && Step(v, lowEnd - v, period, isNotBelow);
  if (!isReduced) v = ReduceAtOnce(given, lowEnd, highEnd);
  return lowEnd > v ? lowEnd : v;
}

Gk_Domain Gk_Domain::intersection(Gk_Domain const& other) const noexcept {
  return Gk_Domain(isContained(other.lowEnd) ? other.lowEnd : lowEnd,
                   isContained(other.highEnd) ? other.highEnd : highEnd, tolerance);
}

bool Gk_Domain::extend(Gk_Domain const& other) noexcept {
  bool const byLow = other.isLowBounded() && extend(other.lowEnd);
  bool const byHigh = other.isHighBounded() && extend(other.highEnd);
  return byLow || byHigh;
}

void Gk_Domain::apply(Gk_LinMap const& map) noexcept {
  if (isLowBounded()) lowEnd = map.apply(lowEnd);
  if (isHighBounded()) highEnd = map.apply(highEnd);
  tolerance *= map.slope();
  if (!map.isNegate()) return;
  tolerance = -tolerance;
  std::swap(lowEnd, highEnd);
  ends = Mirrored(ends);
}

Gk_LinMap Gk_Domain::mapTo(Gk_Domain const& target) const noexcept {
  double const slope = target.length() / length();
  return Gk_LinMap(slope, target.lowEnd - lowEnd * slope);
}

void Gk_Domain::dump(VRELStreamFormatter& formatter) const {
  formatter << "Domain"
            << "( " << lowEnd << ", " << highEnd << ")";
}

VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, Gk_Domain const& domain) {
  domain.dump(formatter);
  return formatter;
}
