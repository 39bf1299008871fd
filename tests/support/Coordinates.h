// Points as arrays, which tests compare and print.
#pragma once

#include <limits>
#include <vector>

#include "VRELPoint.h"

inline constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
inline constexpr double infinity = std::numeric_limits<double>::infinity();

// Returns `count` coordinates by operator[]; by default as many as the dimension.
inline std::vector<double> Coordinates(VRELPoint const& point, int count = 0) {
  std::vector<double> coordinates;
  for (int i = 0; i < (count > 0 ? count : point.GetDimension()); ++i) coordinates.push_back(point[i]);
  return coordinates;
}

// Returns X(), Y() and Z() of an object.
template <class Value>
std::vector<float> Floats(Value const& value) {
  return {value.X(), value.Y(), value.Z()};
}
