// Affine placement of a component in its parent.
#pragma once

#include <array>

#include "VRELMorph3D.h"
#include "VRELPoint3D.h"

// 3 by 4 matrix, row by row: the linear part and the translation. It maps the coordinates of the child to those of the
// parent; the linear part contains the factor between their length units.
//
//   Placement const shift = Placement::Translation(1.0, 0.0, 0.0);
//   Placement const both = parent * shift;  // applies `shift` first
//   double point[3] = {0.0, 0.0, 0.0};
//   both.Apply(point);
class Placement {
 public:
  // The identity.
  Placement() noexcept : numbers{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0} {}
  explicit Placement(std::array<double, 12> const& rows) noexcept : numbers(rows) {}

  static Placement Translation(double x, double y, double z) noexcept;
  static Placement Scaling(double factor) noexcept;

  std::array<double, 12> const& Numbers() const noexcept { return numbers; }
  bool IsIdentity() const noexcept;
  // Returns false if a number is not finite.
  bool IsFinite() const noexcept;
  // Returns the determinant of the linear part.
  double Determinant() const noexcept;
  // Computes the inverse. Returns false, and leaves `result` unchanged, if the linear part is singular.
  bool Invert(Placement& result) const noexcept;
  // Returns the placement that applies `other` first.
  Placement operator*(Placement const& other) const noexcept;

  // Replaces the three coordinates by their image.
  void Apply(double* point) const noexcept;
  // Returns the same mapping as a morph with scale 1.
  VRELMorph3D AsMorph() const;

 private:
  std::array<double, 12> numbers;
};
