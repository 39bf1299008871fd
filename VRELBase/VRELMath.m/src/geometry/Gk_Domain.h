// An interval of numbers.
#pragma once

#include "Gk_Def.h"
#include "Gk_Func.h"
#include "Gk_LinMap.h"
#include "VRELExport.h"

class VRELStreamFormatter;

// An interval from low to high with a tolerance of its own, its fuzz. Either end may be open; the number of an open end
// has no meaning. Never fails: with ends that are no numbers nothing is contained.
//
//   Gk_Domain knots(0.0, 1.0, Gk_Def::FuzzKnot);
//   knots.extend(2.5);                                // true, now 0 to 2.5
//   Gk_LinMap const toUnit = knots.mapTo(Gk_Domain(0.0, 1.0, Gk_Def::FuzzKnot));
class VREL_EXPORT Gk_Domain {
 public:
  // Which ends are bounded, one bit each.
  enum EndCondn : int {
    Unset = 0,
    LowBounded = 1,
    HighBounded = 2,
    Finite = 3,
  };

  // Not set: both ends open, with the fuzz of knots.
  Gk_Domain() noexcept : Gk_Domain(Unset, 0.0, 0.0, Gk_Def::FuzzKnot) {}
  Gk_Domain(EndCondn endCondition, double low, double high, double fuzz) noexcept
      : lowEnd(low), highEnd(high), tolerance(fuzz), ends(endCondition) {}
  // Bounded at both ends.
  Gk_Domain(double low, double high, double fuzz) noexcept : Gk_Domain(Finite, low, high, fuzz) {}

  double low() const noexcept { return lowEnd; }
  double high() const noexcept { return highEnd; }
  double fuzz() const noexcept { return tolerance; }
  EndCondn endCondition() const noexcept { return ends; }
  // From low to high, whatever is bounded.
  double length() const noexcept { return highEnd - lowEnd; }
  // Whether both ends are bounded.
  bool isFinite() const noexcept { return ends == Finite; }
  // Whether it is finite and shorter than its fuzz.
  bool isDegenerate() const noexcept { return isFinite() && length() < tolerance; }

  // The mirror image: from -high to -low.
  Gk_Domain operator-() const noexcept { return Gk_Domain(Exchanged(ends), -highEnd, -lowEnd, tolerance); }

  // Moves each bounded end outward by d. Always true.
  bool expand(double d) noexcept;

  // The number at the ratio t: low for 0, high for 1.
  double locate(double t) const noexcept { return highEnd * t + (1.0 - t) * lowEnd; }

  // Whether v is that end within the fuzz. Like stick below these go by the numbers, whatever is bounded.
  bool isLow(double v) const noexcept { return Gk_Func::equal(v, lowEnd, tolerance); }
  bool isHigh(double v) const noexcept { return Gk_Func::equal(v, highEnd, tolerance); }
  bool isBoundary(double v) const noexcept { return isLow(v) || isHigh(v); }

  // Whether v is beyond that end, bounded or not, by more than the fuzz.
  bool isAbove(double v) const noexcept { return !Gk_Func::lesseq(v, highEnd, tolerance); }
  bool isBelow(double v) const noexcept { return !Gk_Func::lesseq(lowEnd, v, tolerance); }

  // Whether v is beyond no bounded end by more than the fuzz.
  bool isContained(double v) const noexcept {
    return (!isLowBounded() || !isBelow(v)) && (!isHighBounded() || !isAbove(v));
  }
  // Whether both ends of the other are contained, be they bounded or not.
  bool isContained(Gk_Domain const& other) const noexcept {
    return isContained(other.lowEnd) && isContained(other.highEnd);
  }

  // Whether v is on the inner side of each bounded end, and not within the fuzz of it.
  bool isInside(double v) const noexcept;
  bool isInside(Gk_Domain const& other) const noexcept { return isInside(other.lowEnd) && isInside(other.highEnd); }

  // Whether the same ends are bounded, and equal within a tolerance; -1.0 stands for the fuzz of this domain.
  bool isSame(Gk_Domain const& other, double within) const noexcept;

  // v, but that end which v is beyond, or within the fuzz of.
  double stick(double v) const noexcept;

  // A parameter that repeats with the length, brought into the interval by whole turns; as it is where an end is open.
  // Both ends are in the interval: a whole number of turns above the high end is the high end.
  // Where no number of turns would do, because the length is not above 0 or v is infinite, the low end; a v that is not
  // a number comes back.
  double principalParam(double v) const noexcept;

  // The ends of the other that are contained here, and otherwise those of this domain; finite, with the fuzz of this
  // domain. That two domains without a common number give the ends of this one is promised: nothing is tested.
  Gk_Domain intersection(Gk_Domain const& other) const noexcept;

  // Moves bounded ends outward to v. False, and nothing moves, for a v that is contained. A domain that has not been
  // set becomes finite, from v to v.
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
  // By the bounded ends of the other. Whether one of them changed something.
  bool extend(Gk_Domain const& other) noexcept;

  // Becomes its image: bounded ends are mapped, the fuzz grows by the slope. A map that negates exchanges the ends.
  void apply(Gk_LinMap const& map) noexcept;

  // The map that takes this domain to another. The length is not tested: one of 0 gives a slope that is no finite
  // number.
  Gk_LinMap mapTo(Gk_Domain const& target) const noexcept;

  // Writes "Domain( low, high)".
  void dump(VRELStreamFormatter& formatter) const;

 private:
  // That which stays the same seen from the other side stays.
  static EndCondn Exchanged(EndCondn ends) noexcept {
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

VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, Gk_Domain const& domain);
