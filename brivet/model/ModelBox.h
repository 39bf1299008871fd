// Axis-aligned box of a shape.
#pragma once

#include <cmath>

#include "VRELBox3D.h"
#include "VRELPoint3D.h"

// Coordinates beyond this extend no box: no length unit needs them, and they are usually damaged numbers.
constexpr double kLargestCoordinate = 1e15;

// Box that is empty at first. It has no tolerance, so that tiny shapes keep their size.
struct ModelBox {
  bool isEmpty = true;
  double low[3] = {0.0, 0.0, 0.0};
  double high[3] = {0.0, 0.0, 0.0};

  // Extends the box by a point, unless a coordinate is not finite or is beyond kLargestCoordinate.
  void Extend(double const* point) noexcept {
    for (int i = 0; i < 3; ++i) {
      if (!(std::abs(point[i]) <= kLargestCoordinate)) return;
    }
    for (int i = 0; i < 3; ++i) {
      if (isEmpty || point[i] < low[i]) low[i] = point[i];
      if (isEmpty || point[i] > high[i]) high[i] = point[i];
    }
    isEmpty = false;
  }
  void Extend(ModelBox const& other) noexcept {
    if (other.isEmpty) return;
    Extend(other.low);
    Extend(other.high);
  }
  // Returns whether another box is inside or touches the inside of the boundary. An empty box contains nothing.
  bool Contains(ModelBox const& other) const noexcept {
    bool contains = !isEmpty && !other.isEmpty;
    for (int i = 0; i < 3; ++i) contains = contains && other.low[i] >= low[i] && other.high[i] <= high[i];
    return contains;
  }
  // Returns the length of the diagonal, 0 if the box is empty.
  double Diagonal() const noexcept {
    double const size[3] = {high[0] - low[0], high[1] - low[1], high[2] - low[2]};
    return std::sqrt(size[0] * size[0] + size[1] * size[1] + size[2] * size[2]);
  }
  VRELBox3D AsBox3D() const {
    return isEmpty ? VRELBox3D()
                   : VRELBox3D(VRELPoint3D(low[0], low[1], low[2]), VRELPoint3D(high[0], high[1], high[2]));
  }
};
