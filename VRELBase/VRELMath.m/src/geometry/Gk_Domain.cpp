#include "Gk_Domain.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "VRELStreamFormatter.h"

namespace {

// So many turns are made one by one, each with its rounding; further ones at once.
constexpr int singleTurns = 65536;

// v in the interval, a whole number of turns away. As with single turns, what comes from above may stop at the high
// end, and what comes from below stops at the low end as soon as it is there within Gk_Def::FuzzReal. The distance
// itself may be too large for a double.
double AllTurns(double v, double low, double high) noexcept {
  double const period = high - low;
  double const rest = std::fmod(std::fmod(v, period) - std::fmod(low, period), period);
  if (v > high) return std::min(low + (rest > 0.0 ? rest : rest + period), high);
  double const upwards = rest < 0.0 ? rest + period : rest;
  return Gk_Func::lesseq(period, upwards, Gk_Def::FuzzReal) ? low : low + upwards;
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

double Gk_Domain::principalParam(double v) const noexcept {
  if (!isFinite() || std::isnan(v)) return v;
  auto const isTooLow = [this](double x) { return !Gk_Func::lesseq(lowEnd, x, Gk_Def::FuzzReal); };
  double const period = length();
  // No turn would ever end.
  if ((v > highEnd || isTooLow(v)) && !(period > 0.0 && std::isfinite(period) && std::isfinite(v))) return lowEnd;

  double const given = v;
  int turns = 0;
  for (; v > highEnd && turns < singleTurns; ++turns) v -= period;
  for (; isTooLow(v) && turns < singleTurns; ++turns) v += period;
  if (v > highEnd || isTooLow(v)) v = AllTurns(given, lowEnd, highEnd);
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
  ends = Exchanged(ends);
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
