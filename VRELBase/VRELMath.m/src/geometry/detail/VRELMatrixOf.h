// Grids of values, by two indexes.
#pragma once

#include <climits>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "VRELAllocException.h"
#include "VRELDynamicArray.h"
#include "VRELPoint3D.h"
#include "VRELWeightPoint3D.h"

// uSize() rows of vSize() values; element (u, v) has place vSize() u + v. Copies share their values, as the array in
// which they stand does: what is changed through one grid, by transpose() too, is seen through all. Call copy() for a
// grid of your own.
//
//   VRELMatrixOfdouble knots(2, 3);
//   knots.elem(1, 2) = 0.5;
//
// A size below 0 counts as 0. Throws VRELAllocException when memory runs out or there are more values than an int can
// count.
template <class T>
class VRELMatrixOf {
 public:
  // Empty.
  VRELMatrixOf() : rowCount(0), columnCount(0) {}
  // All values are 0; so is the weight of a point.
  VRELMatrixOf(int u, int v) : VRELMatrixOf(u, v, Zero()) {}
  VRELMatrixOf(int u, int v, T const& value) : values(Count(u, v), value), rowCount(Size(u)), columnCount(Size(v)) {}
  // Copies u times v values, row by row; null gives zeros.
  VRELMatrixOf(T const* source, int u, int v) : VRELMatrixOf(u, v) {
    for (int i = 0; source != nullptr && i < values.size(); ++i) values[i] = source[i];
  }

  int uSize() const noexcept { return rowCount; }
  int vSize() const noexcept { return columnCount; }

  // There is no range check.
  T& elem(int u, int v) noexcept { return values[Place(u, v)]; }
  T const& elem(int u, int v) const noexcept { return values[Place(u, v)]; }

  VRELMatrixOf copy() const {
    VRELMatrixOf result(*this);
    result.values = values.copy();
    return result;
  }

  // Swaps the values of a square grid across the diagonal, for all that share them. Any other becomes a grid of its
  // own. Returns this grid.
  VRELMatrixOf& transpose() {
    if (rowCount != columnCount) return *this = Transposed();
    for (int u = 0; u < rowCount; ++u) {
      for (int v = 0; v < u; ++v) std::swap(elem(u, v), elem(v, u));
    }
    return *this;
  }

  // A new grid of a - c + 1 by b - d + 1 values, of which (i, j) is (a + i, d + j) of this one. That the rows begin at
  // the first argument and the columns at the last is promised. What lies outside of this grid is 0.
  VRELMatrixOf subset(int a, int b, int c, int d) const {
    VRELMatrixOf result(Span(a, c), Span(b, d));
    for (int i = 0; i < result.rowCount && a >= 0 && a < rowCount - i; ++i) {
      for (int j = 0; j < result.columnCount; ++j) {
        std::int64_t const v = static_cast<std::int64_t>(d) + j;
        if (v >= 0 && v < columnCount) result.elem(i, j) = elem(a + i, static_cast<int>(v));
      }
    }
    return result;
  }

 private:
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

  // How many indexes run from low to high.
  static int Span(int high, int low) {
    std::int64_t const count = static_cast<std::int64_t>(high) - low + 1;
    if (count > INT_MAX) throw VRELAllocException();
    return count < 0 ? 0 : static_cast<int>(count);
  }

  int Place(int u, int v) const noexcept { return columnCount * u + v; }

  VRELMatrixOf Transposed() const {
    VRELMatrixOf result(columnCount, rowCount);
    for (int u = 0; u < rowCount; ++u) {
      for (int v = 0; v < columnCount; ++v) result.elem(v, u) = elem(u, v);
    }
    return result;
  }

  VRELDynamicArray<T> values;
  std::int32_t rowCount;
  std::int32_t columnCount;
};

using VRELMatrixOfdouble = VRELMatrixOf<double>;
using VRELMatrixOfVRELPoint3D = VRELMatrixOf<VRELPoint3D>;
using VRELMatrixOfVRELWeightPoint3D = VRELMatrixOf<VRELWeightPoint3D>;
