// The linear map of one number.
#pragma once

#include "VRELExport.h"

// Maps x to slope x + offset. A map whose slope is 1 or -1 and whose offset is 0, each within Gk_Def::FuzzReal, is a
// unit map: it hands on x, or minus x, without arithmetic. Never fails; a slope of 0 divides in inverse() unasked.
class VREL_EXPORT Gk_LinMap {
 public:
  Gk_LinMap(double slope, double offset) noexcept;

  double slope() const noexcept { return slopeValue; }
  double offset() const noexcept { return offsetValue; }
  // Whether the slope is below 0.
  bool isNegate() const noexcept { return negates; }
  // Whether the map hands on every x as it is.
  bool isIdentity() const noexcept { return isUnit && !negates; }

  double apply(double x) const noexcept;
  // The x that is mapped to y; 0 if the slope is 0 within Gk_Def::FuzzReal.
  double invert(double y) const noexcept;
  // The map of slope 1 / slope that goes back.
  Gk_LinMap inverse() const noexcept;

  // Makes this the map that runs this first and then `other` (before true), or `other` first and then this. Nothing
  // changes when `other` is the identity. Returns this map.
  Gk_LinMap& compose(Gk_LinMap const& other, bool before) noexcept;

  // Slopes and offsets are equal within Gk_Def::FuzzReal.
  bool operator==(Gk_LinMap const& other) const noexcept;
  bool operator!=(Gk_LinMap const& other) const noexcept { return !(*this == other); }

 private:
  void Classify() noexcept;

  double slopeValue;
  double offsetValue;
  bool isUnit;
  bool negates;
};
