// Points as arrays, so that tests compare and print them whole.
#pragma once

#include <limits>
#include <vector>

#include "VRELPoint.h"

inline constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
inline constexpr double infinity = std::numeric_limits<double>::infinity();

// The coordinates by operator[], with `count` of them; as many as the dimension if none is given.
inline std::vector<double> Coordinates(VRELPoint const& point, int count = 0) {
  std::vector<double> coordinates;
  for (int i = 0; i < (count > 0 ? count : point.GetDimension()); ++i) coordinates.push_back(point[i]);
  return coordinates;
}

// The value of a float class that has X(), Y() and Z().
template <class Value>
std::vector<float> Floats(Value const& value) {
  return {value.X(), value.Y(), value.Z()};
}
