// Interval of numbers.
#pragma once

#include "Gk_Def.h"
#include "Gk_Func.h"
#include "Gk_LinMap.h"
#include "VRELExport.h"

class VRELStreamFormatter;

// Interval from low to high with its own tolerance, the fuzz. Either end may be unbounded; the number of an unbounded
// end is then ignored unless noted otherwise.
//
//   Gk_Domain knots(0.0, 1.0, Gk_Def::FuzzKnot);
//   knots.extend(2.5);                                // true, now 0 to 2.5
//   Gk_LinMap const toUnit = knots.mapTo(Gk_Domain(0.0, 1.0, Gk_Def::FuzzKnot));
//   Gk_Domain angles(0.0, VREL2PI, Gk_Def::FuzzReal);
//   double const angle = angles.principalParam(7.0);  // 7 - 2 pi
//
// No operation fails. If an end is NaN, no number is contained.
class VREL_EXPORT Gk_Domain {
 public:
  // Bounded ends, one bit each.
  enum EndCondn : int {
    Unset = 0,
    LowBounded = 1,
    HighBounded = 2,
    Finite = 3,
  };

  // Creates an unset interval, with both ends unbounded and the fuzz Gk_Def::FuzzKnot.
  Gk_Domain() noexcept : Gk_Domain(Unset, 0.0, 0.0, Gk_Def::FuzzKnot) {}
  Gk_Domain(EndCondn endCondition, double low, double high, double fuzz) noexcept
      : lowEnd(low), highEnd(high), tolerance(fuzz), ends(endCondition) {}
  // Creates an interval with both ends bounded.
  Gk_Domain(double low, double high, double fuzz) noexcept : Gk_Domain(Finite, low, high, fuzz) {}
  // Does not compile: without the fuzz, the end condition would be taken as the low end.
  Gk_Domain(EndCondn endCondition, double low, double high) = delete;

  double low() const noexcept { return lowEnd; }
  double high() const noexcept { return highEnd; }
  double fuzz() const noexcept { return tolerance; }
  EndCondn endCondition() const noexcept { return ends; }
  // Returns high - low, whether the ends are bounded or not.
  double length() const noexcept { return highEnd - lowEnd; }
  // Returns true if both ends are bounded.
  bool isFinite() const noexcept { return ends == Finite; }
  // Returns true if both ends are bounded and the length is below the fuzz.
  bool isDegenerate() const noexcept { return isFinite() && length() < tolerance; }

  // Returns the interval from -high to -low.
  Gk_Domain operator-() const noexcept { return Gk_Domain(Mirrored(ends), -highEnd, -lowEnd, tolerance); }

  // Moves each bounded end outward by `d`. Returns true.
  bool expand(double d) noexcept;

  // Interpolates linearly: returns low for 0 and high for 1.
  double locate(double t) const noexcept { return highEnd * t + (1.0 - t) * lowEnd; }

  // Return true if `v` equals that end within the fuzz, whether the end is bounded or not.
  bool isLow(double v) const noexcept { return Gk_Func::equal(v, lowEnd, tolerance); }
  bool isHigh(double v) const noexcept { return Gk_Func::equal(v, highEnd, tolerance); }
  bool isBoundary(double v) const noexcept { return isLow(v) || isHigh(v); }

  // Return true if `v` is above or below the interval by more than the fuzz, whether the end is bounded or not.
  bool isAbove(double v) const noexcept { return !Gk_Func::lesseq(v, highEnd, tolerance); }
  bool isBelow(double v) const noexcept { return !Gk_Func::lesseq(lowEnd, v, tolerance); }

  // Returns true if `v` is not outside a bounded end by more than the fuzz.
  bool isContained(double v) const noexcept {
    return (!isLowBounded() || !isBelow(v)) && (!isHighBounded() || !isAbove(v));
  }
  // Returns true if both ends of `other` are contained, whether they are bounded or not.
  bool isContained(Gk_Domain const& other) const noexcept {
    return isContained(other.lowEnd) && isContained(other.highEnd);
  }

  // Return true if the number, or both ends of `other`, are on the inner side of each bounded end by more than the
  // fuzz.
  bool isInside(double v) const noexcept;
  bool isInside(Gk_Domain const& other) const noexcept { return isInside(other.lowEnd) && isInside(other.highEnd); }

  // Returns true if the same ends are bounded and they are equal within the tolerance `within`. -1.0 selects the fuzz
  // of this interval.
  bool isSame(Gk_Domain const& other, double within) const noexcept;

  // Clamps `v` to the interval and snaps it to an end within the fuzz, whether the ends are bounded or not.
  double stick(double v) const noexcept;

  // Reduces a periodic parameter to the interval by adding or subtracting the length as often as needed. Returns `v`
  // unchanged if an end is unbounded or if `v` is NaN. A parameter that is a whole number of periods above the high end
  // becomes the high end. Returns the low end if `v` is outside and cannot be reduced, because the length is not above
  // 0 or because `v` or the length is infinite.
  //
  // Up to 2^24 periods are added one by one, with the rounding of each addition; larger distances are reduced in one
  // step.
  double principalParam(double v) const noexcept;

  // Returns a bounded interval with the fuzz of this one. Each end is that of `other` if it is contained in this
  // interval, otherwise that of this interval.
  // Compatibility: two disjoint intervals are not detected; the result has the ends of this interval.
  Gk_Domain intersection(Gk_Domain const& other) const noexcept;

  // Extends the interval to contain `v` by moving bounded ends. Returns true if it changed, false if `v` was contained.
  // An unset interval becomes the bounded interval from `v` to `v`.
  bool extend(double v) noexcept {
    if (ends == Unset) {
      lowEnd = v;
      highEnd = v;
      ends = Finite;
      return true;
    }
    if (isContained(v)) return false;
    if (isLowBounded() && lowEnd > v) lowEnd = v;
    if (isHighBounded() && v > highEnd) highEnd = v;
    return true;
  }
  // Extends the interval to contain the bounded ends of `other`. Returns true if it changed.
  bool extend(Gk_Domain const& other) noexcept;

  // Maps the bounded ends and multiplies the fuzz by the slope. A map with a negative slope swaps the ends; the fuzz
  // stays positive.
  void apply(Gk_LinMap const& map) noexcept;

  // Returns the linear map from this interval to `target`. If the length is 0, the slope is infinite or NaN.
  Gk_LinMap mapTo(Gk_Domain const& target) const noexcept;

  // Writes "Domain( low, high)".
  void dump(VRELStreamFormatter& formatter) const;

 private:
  // Returns the end condition of the mirrored interval.
  static EndCondn Mirrored(EndCondn ends) noexcept {
    if (ends == LowBounded) return HighBounded;
    return ends == HighBounded ? LowBounded : ends;
  }

  bool isLowBounded() const noexcept { return (ends & LowBounded) != 0; }
  bool isHighBounded() const noexcept { return (ends & HighBounded) != 0; }

  double lowEnd;
  double highEnd;
  double tolerance;
  EndCondn ends;
};

// Writes the interval with dump.
VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, Gk_Domain const& domain);
