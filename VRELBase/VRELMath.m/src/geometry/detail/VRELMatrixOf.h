// Common implementation of the grids of values.
#pragma once

#include <climits>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "VRELAllocException.h"
#include "VRELDynamicArray.h"
#include "VRELWeightPoint.h"

// Two-dimensional array of T with uSize() rows of vSize() values, as a CRTP base class of `Matrix`: VRELMatrixOfdouble,
// VRELMatrixOfVRELPoint3D, VRELMatrixOfVRELWeightPoint3D. Element (u, v) has the index vSize() u + v.
//
//   VRELMatrixOfdouble knots(2, 3);
//   knots.elem(1, 2) = 0.5;
//   for (double knot : knots) ...  // row by row
//
// Copies share their values, as copies of VRELDynamicArray do: a change through one grid, transpose() included, is
// visible through all of them. copy() returns a grid with values of its own.
//
// Requires: indexes of elem() in range; they are not checked.
// Errors: throws VRELAllocException if memory runs out or if there are more than INT_MAX values. A negative size is
// taken as 0.
template <class Matrix, class T>
class VRELMatrixOf {
 public:
  using value_type = T;

  // Creates an empty grid.
  VRELMatrixOf() : rowCount(0), columnCount(0) {}
  // Creates a grid of zeros; points have a weight of 0, too.
  VRELMatrixOf(int u, int v) : VRELMatrixOf(u, v, Zero()) {}
  // Creates a grid in which all elements are `value`.
  VRELMatrixOf(int u, int v, T const& value) : values(Count(u, v), value), rowCount(Size(u)), columnCount(Size(v)) {}
  // Copies u times v values, row by row; null creates zeros.
  VRELMatrixOf(T const* source, int u, int v) : VRELMatrixOf(u, v) {
    for (int i = 0; source != nullptr && i < values.size(); ++i) values[i] = source[i];
  }

  int uSize() const noexcept { return rowCount; }
  int vSize() const noexcept { return columnCount; }

  // Returns the element in row `u` and column `v`.
  // Requires: both are in range.
  T& elem(int u, int v) noexcept { return values[Index(u, v)]; }
  T const& elem(int u, int v) const noexcept { return values[Index(u, v)]; }

  // Iterates over all values, row by row.
  T* begin() noexcept { return values.begin(); }
  T* end() noexcept { return values.end(); }
  T const* begin() const noexcept { return values.begin(); }
  T const* end() const noexcept { return values.end(); }

  // Returns a grid with values of its own.
  Matrix copy() const {
    Matrix result(Self());
    Base(result).values = values.copy();
    return result;
  }

  // Transposes the grid and returns it. A square grid swaps its values across the diagonal, also for all copies that
  // share them; any other grid gets new values that it does not share.
  Matrix& transpose() {
    if (rowCount != columnCount) return static_cast<Matrix&>(*this) = Transposed();
    for (int u = 0; u < rowCount; ++u) {
      for (int v = 0; v < u; ++v) std::swap(elem(u, v), elem(v, u));
    }
    return static_cast<Matrix&>(*this);
  }

  // Returns a new grid of a - c + 1 by b - d + 1 values, in which element (i, j) is element (a + i, d + j) of this one.
  // Elements outside this grid are 0.
  // Compatibility: rows start at the first argument and columns at the last one.
  Matrix subset(int a, int b, int c, int d) const {
    Matrix result(Span(a, c), Span(b, d));
    for (int i = 0; i < result.uSize() && a >= 0 && a < rowCount - i; ++i) {
      for (int j = 0; j < result.vSize(); ++j) {
        std::int64_t const v = static_cast<std::int64_t>(d) + j;
        if (v >= 0 && v < columnCount) result.elem(i, j) = elem(a + i, static_cast<int>(v));
      }
    }
    return result;
  }

 private:
  static VRELMatrixOf& Base(Matrix& matrix) noexcept { return matrix; }
  Matrix const& Self() const noexcept { return static_cast<Matrix const&>(*this); }

  static T Zero() {
    if constexpr (std::is_base_of_v<VRELWeightPoint, T>) {
      return T(0.0);
    } else {
      return T();
    }
  }

  static int Size(int size) noexcept { return size < 0 ? 0 : size; }

  static int Count(int u, int v) {
    std::int64_t const count = static_cast<std::int64_t>(Size(u)) * Size(v);
    if (count > INT_MAX) throw VRELAllocException();
    return static_cast<int>(count);
  }

  // Returns the number of indexes from `low` to `high`.
  static int Span(int high, int low) {
    std::int64_t const count = static_cast<std::int64_t>(high) - low + 1;
    if (count > INT_MAX) throw VRELAllocException();
    return count < 0 ? 0 : static_cast<int>(count);
  }

  int Index(int u, int v) const noexcept { return columnCount * u + v; }

  Matrix Transposed() const {
    Matrix result(columnCount, rowCount);
    for (int u = 0; u < rowCount; ++u) {
      for (int v = 0; v < columnCount; ++v) result.elem(v, u) = elem(u, v);
    }
    return result;
  }

  VRELDynamicArray<T> values;
  std::int32_t rowCount;
  std::int32_t columnCount;
};
