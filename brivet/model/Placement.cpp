#include "Placement.h"

#include <algorithm>
#include <cmath>

#include "VRELAffine3D.h"

Placement Placement::Translation(double x, double y, double z) noexcept {
  return Placement({1, 0, 0, x, 0, 1, 0, y, 0, 0, 1, z});
}

Placement Placement::Scaling(double factor) noexcept {
  return Placement({factor, 0, 0, 0, 0, factor, 0, 0, 0, 0, factor, 0});
}

bool Placement::IsIdentity() const noexcept {
  return numbers == Placement().numbers;
}

bool Placement::IsFinite() const noexcept {
  return std::all_of(numbers.begin(), numbers.end(), [](double number) { return std::isfinite(number); });
}

double Placement::Determinant() const noexcept {
  auto const& n = numbers;
  return n[0] * (n[5] * n[10] - n[6] * n[9]) - n[1] * (n[4] * n[10] - n[6] * n[8]) + n[2] * (n[4] * n[9] - n[5] * n[8]);
}

// Cramer's rule: the adjugate divided by the determinant.
bool Placement::Invert(Placement& result) const noexcept {
  double const determinant = Determinant();
  if (!std::isfinite(determinant) || determinant == 0.0) return false;
  auto const& n = numbers;
  std::array<double, 12> inverse{};
  inverse[0] = (n[5] * n[10] - n[6] * n[9]) / determinant;
  inverse[1] = (n[2] * n[9] - n[1] * n[10]) / determinant;
  inverse[2] = (n[1] * n[6] - n[2] * n[5]) / determinant;
  inverse[4] = (n[6] * n[8] - n[4] * n[10]) / determinant;
  inverse[5] = (n[0] * n[10] - n[2] * n[8]) / determinant;
  inverse[6] = (n[2] * n[4] - n[0] * n[6]) / determinant;
  inverse[8] = (n[4] * n[9] - n[5] * n[8]) / determinant;
  inverse[9] = (n[1] * n[8] - n[0] * n[9]) / determinant;
  inverse[10] = (n[0] * n[5] - n[1] * n[4]) / determinant;
  for (std::size_t row = 0; row < 12; row += 4) {
    inverse[row + 3] = -(inverse[row] * n[3] + inverse[row + 1] * n[7] + inverse[row + 2] * n[11]);
  }
  Placement const candidate(inverse);
  if (!candidate.IsFinite()) return false;
  result = candidate;
  return true;
}

Placement Placement::operator*(Placement const& other) const noexcept {
  std::array<double, 12> product{};
  for (std::size_t row = 0; row < 12; row += 4) {
    for (std::size_t column = 0; column < 4; ++column) {
      double sum = column == 3 ? numbers[row + 3] : 0.0;
      for (std::size_t k = 0; k < 3; ++k) sum += numbers[row + k] * other.numbers[4 * k + column];
      product[row + column] = sum;
    }
  }
  return Placement(product);
}

void Placement::Apply(double* point) const noexcept {
  double const x = point[0];
  double const y = point[1];
  double const z = point[2];
  for (std::size_t row = 0; row < 3; ++row) {
    point[row] = numbers[4 * row] * x + numbers[4 * row + 1] * y + numbers[4 * row + 2] * z + numbers[4 * row + 3];
  }
}

VRELMorph3D Placement::AsMorph() const {
  VRELAffine3D affine;
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      affine.SetElement(row, column, numbers[4 * static_cast<std::size_t>(row) + static_cast<std::size_t>(column)]);
    }
  }
  return VRELMorph3D(affine, VRELPoint3D(numbers[3], numbers[7], numbers[11]), 1.0);
}
