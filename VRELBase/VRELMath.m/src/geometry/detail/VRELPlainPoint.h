// Common implementation of VRELPoint2D and VRELPoint3D.
#pragma once

#include <cmath>
#include <utility>

#include "Gk_Def.h"
#include "Gk_Func.h"
#include "VRELPoint.h"

// Arithmetic of a point of N coordinates, as a CRTP base class of `Point`. No operation here polls for an abort.
template <class Point, int N>
class VRELPlainPoint : public VRELPoint {
 public:
  VRELPlainPoint(VRELPlainPoint const& other) noexcept = default;
  // Copies the coordinates.
  // Compatibility: sets the reference count to 0; see CopyFrom.
  VRELPlainPoint& operator=(VRELPlainPoint const& other) noexcept {
    VRELReferenceCount::operator=(other);
    CopyFrom(static_cast<Point const&>(other));
    return *this;
  }

  // Copies the coordinates and leaves the reference count unchanged, so that it is safe on a shared point:
  //
  //   VRELPoint3DHandle handle(new VRELPoint3D(1.0, 2.0, 3.0));
  //   handle->CopyFrom(VRELPoint3D(4.0, 5.0, 6.0));
  void CopyFrom(Point const& other) noexcept {
    for (int i = 0; i < N; ++i) ChangeCoordinates()[i] = other.GetCoordinates()[i];
  }
  using VRELPoint::CopyFrom;

  Point& operator+=(Point const& other) noexcept {
    for (int i = 0; i < N; ++i) ChangeCoordinates()[i] += other.GetCoordinates()[i];
    return Self();
  }
  Point& operator-=(Point const& other) noexcept {
    for (int i = 0; i < N; ++i) ChangeCoordinates()[i] -= other.GetCoordinates()[i];
    return Self();
  }
  Point& operator*=(double factor) noexcept {
    for (int i = 0; i < N; ++i) ChangeCoordinates()[i] *= factor;
    return Self();
  }
  // Does nothing if `divisor` is exactly 0.
  Point& operator/=(double divisor) noexcept {
    if (divisor == 0.0) return Self();
    for (int i = 0; i < N; ++i) ChangeCoordinates()[i] /= divisor;
    return Self();
  }

  // Adds the coordinates of `by`.
  void Shift(Point const& by) noexcept { *this += by; }

  // Returns a copy on the heap.
  // Ownership: the caller deletes it.
  Point* Copy() const { return new Point(static_cast<Point const&>(*this)); }

  // Returns the vector divided by its length, or a copy if the length is exactly 0. There is no tolerance.
  Point Normalize() const {
    Point unit(static_cast<Point const&>(*this));
    unit /= Norm();
    return unit;
  }

  // Returns a unit vector that is perpendicular to this one.
  Point Orthogonalize() const;

  friend Point operator+(Point const& a, Point const& b) noexcept {
    Point sum(a);
    sum += b;
    return sum;
  }
  friend Point operator-(Point const& a, Point const& b) noexcept {
    Point difference(a);
    difference -= b;
    return difference;
  }
  friend Point operator-(Point const& a) noexcept {
    Point opposite(a);
    opposite *= -1.0;
    return opposite;
  }
  friend Point operator*(Point const& a, double factor) noexcept {
    Point product(a);
    product *= factor;
    return product;
  }
  friend Point operator*(double factor, Point const& a) noexcept { return a * factor; }
  // Returns a copy if `divisor` is exactly 0.
  friend Point operator/(Point const& a, double divisor) noexcept {
    Point quotient(a);
    quotient /= divisor;
    return quotient;
  }
  // Returns the scalar product.
  friend double operator*(Point const& a, Point const& b) noexcept {
    double sum = 0.0;
    for (int i = 0; i < N; ++i) sum += a.GetCoordinates()[i] * b.GetCoordinates()[i];
    return sum;
  }
  // Returns true if all coordinates are exactly equal. Use IsWithinTolerance to compare computed points.
  friend bool operator==(Point const& a, Point const& b) noexcept {
    for (int i = 0; i < N; ++i) {
      if (!(a.GetCoordinates()[i] == b.GetCoordinates()[i])) return false;
    }
    return true;
  }
  friend bool operator!=(Point const& a, Point const& b) noexcept { return !(a == b); }

 protected:
  VRELPlainPoint() noexcept : VRELPoint(N) {}

 private:
  Point& Self() noexcept { return static_cast<Point&>(*this); }
  double Norm() const noexcept {
    return std::sqrt(static_cast<Point const&>(*this) * static_cast<Point const&>(*this));
  }
};

// Swaps two coordinates and negates one of them: (.., p, q) becomes (.., q, -p) with zeros elsewhere, which is
// perpendicular for any p and q. A single bubble sort pass over the signed coordinates, from the last to the
// first, selects p and q.
//
// Compatibility: the pass neither sorts completely nor compares absolute values. It determines which of the
// perpendicular vectors is returned.
template <class Point, int N>
Point VRELPlainPoint<Point, N>::Orthogonalize() const {
  constexpr auto kCoordinates = static_cast<std::size_t>(N);
  double a[kCoordinates];
  int position[kCoordinates];
  for (int i = 0; i < N; ++i) {
    a[i] = GetCoordinates()[i];
    position[i] = i;
  }
  for (int i = N - 1; i > 0; --i) {
    if (!(a[i] > a[i - 1])) continue;
    std::swap(a[i], a[i - 1]);
    std::swap(position[i], position[i - 1]);
  }
  Point perpendicular;
  double* const v = perpendicular.ChangeCoordinates();
  v[N - 2] = a[N - 1];
  v[N - 1] = -a[N - 2];
  double length = perpendicular.Norm();
  if (Gk_Func::equal(length, 0.0, Gk_Def::FuzzReal)) {
    v[1] = 1.0;
    length = 1.0;
  }
  Point result;
  for (int i = 0; i < N; ++i) result.ChangeCoordinates()[position[i]] = v[i] / length;
  return result;
}
