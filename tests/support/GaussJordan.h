// Independent model of matrix inversion.
#pragma once

#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

using MatrixRows = std::vector<std::vector<double>>;

// Returns the inverse by Gauss-Jordan elimination with partial pivoting; empty for a singular matrix.
inline MatrixRows GaussJordanInverse(MatrixRows rows) {
  std::size_t const size = rows.size();
  for (std::size_t i = 0; i < size; ++i) {
    rows[i].resize(2 * size, 0.0);
    rows[i][size + i] = 1.0;
  }
  for (std::size_t column = 0; column < size; ++column) {
    std::size_t pivot = column;
    for (std::size_t i = column; i < size; ++i) {
      if (std::fabs(rows[i][column]) > std::fabs(rows[pivot][column])) pivot = i;
    }
    if (rows[pivot][column] == 0.0) return {};
    std::swap(rows[pivot], rows[column]);
    double const divisor = rows[column][column];
    for (double& value : rows[column]) value /= divisor;
    for (std::size_t i = 0; i < size; ++i) {
      if (i == column) continue;
      double const factor = rows[i][column];
      for (std::size_t j = 0; j < 2 * size; ++j) rows[i][j] -= factor * rows[column][j];
    }
  }
  for (auto& row : rows) row.erase(row.begin(), row.begin() + static_cast<std::ptrdiff_t>(size));
  return rows;
}
