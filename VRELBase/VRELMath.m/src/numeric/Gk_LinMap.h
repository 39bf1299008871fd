// Linear map of one number.
#pragma once

#include "VRELExport.h"

// Maps x to slope * x + offset. Use it to convert between two parameter ranges.
//
//   Gk_LinMap const celsius(1.8, 32.0);
//   celsius.apply(100.0);  // 212
//   celsius.invert(32.0);  // 0
//
// A map with a slope of 1 or -1 and an offset of 0, each within Gk_Def::FuzzReal, is a unit map, which returns x or -x
// without rounding. No operation fails; inverse() of a slope of 0 divides by 0.
class VREL_EXPORT Gk_LinMap {
 public:
  Gk_LinMap(double slope, double offset) noexcept;

  double slope() const noexcept { return slopeValue; }
  double offset() const noexcept { return offsetValue; }
  // Returns whether the slope is below 0.
  bool isNegate() const noexcept { return negates; }
  // Returns whether the map leaves every x unchanged.
  bool isIdentity() const noexcept { return isUnit && !negates; }

  // Returns the image of x.
  double apply(double x) const noexcept;
  // Returns the x that is mapped to y; 0 if the slope is 0 within Gk_Def::FuzzReal.
  double invert(double y) const noexcept;
  // Returns the inverse map.
  Gk_LinMap inverse() const noexcept;

  // Composes this map with `other`: this map is applied first if `before` is true, and `other` first otherwise. Does
  // nothing if `other` is the identity. Returns this map.
  Gk_LinMap& compose(Gk_LinMap const& other, bool before) noexcept;

  // Compares slopes and offsets within Gk_Def::FuzzReal.
  bool operator==(Gk_LinMap const& other) const noexcept;
  bool operator!=(Gk_LinMap const& other) const noexcept { return !(*this == other); }

 private:
  void Classify() noexcept;

  double slopeValue;
  double offsetValue;
  bool isUnit;
  bool negates;
};
