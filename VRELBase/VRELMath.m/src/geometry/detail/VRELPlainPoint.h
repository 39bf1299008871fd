// What the 2D and the 3D point have in common, written for the type of each.
#pragma once

#include <cmath>
#include <utility>

#include "Gk_Def.h"
#include "Gk_Func.h"
#include "VRELPoint.h"

// The arithmetic of a Point of N coordinates, its derived class. Nothing here polls for an abort.
template <class Point, int N>
class VRELPlainPoint : public VRELPoint {
 public:
  VRELPlainPoint(VRELPlainPoint const& other) noexcept = default;
  VRELPlainPoint& operator=(VRELPlainPoint const& other) noexcept {
    VRELReferenceCount::operator=(other);
    for (int i = 0; i < N; ++i) ChangeCoordinates()[i] = other.GetCoordinates()[i];
    return *this;
  }

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
  // Does nothing for a divisor of exactly 0.
  Point& operator/=(double divisor) noexcept {
    if (divisor == 0.0) return Self();
    for (int i = 0; i < N; ++i) ChangeCoordinates()[i] /= divisor;
    return Self();
  }

  // Adds the coordinates of the argument.
  void Shift(Point const& by) noexcept { *this += by; }

  // A new object on the heap; the caller owns it.
  Point* Copy() const { return new Point(static_cast<Point const&>(*this)); }

  // A copy of length 1; a copy as it is if the length is exactly 0. There is no tolerance.
  Point Normalize() const {
    Point unit(static_cast<Point const&>(*this));
    unit /= Norm();
    return unit;
  }

  // A unit vector that is perpendicular to this one.
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
  // A copy for a divisor of exactly 0.
  friend Point operator/(Point const& a, double divisor) noexcept {
    Point quotient(a);
    quotient /= divisor;
    return quotient;
  }
  // The scalar product.
  friend double operator*(Point const& a, Point const& b) noexcept {
    double sum = 0.0;
    for (int i = 0; i < N; ++i) sum += a.GetCoordinates()[i] * b.GetCoordinates()[i];
    return sum;
  }

 protected:
  VRELPlainPoint() noexcept : VRELPoint(N) {}

 private:
  Point& Self() noexcept { return static_cast<Point&>(*this); }
  double Norm() const noexcept {
    return std::sqrt(static_cast<Point const&>(*this) * static_cast<Point const&>(*this));
  }
};

// One pass of exchanges of signed neighbours, from the last coordinate to the first, chooses the two that are turned
// against each other. That the pass neither sorts nor looks at absolute values is promised: it decides which of the
// perpendicular vectors comes out.
template <class Point, int N>
Point VRELPlainPoint<Point, N>::Orthogonalize() const {
  double a[N];
  int position[N];
  for (int i = 0; i < N; ++i) {
    a[i] = GetCoordinates()[i];
    position[i] = i;
  }
  for (int i = N - 1; i > 0; --i) {
    if (!(a[i] > a[i - 1])) continue;
    std::swap(a[i], a[i - 1]);
    std::swap(position[i], position[i - 1]);
  }
  Point turned;
  double* const v = turned.ChangeCoordinates();
  v[N - 2] = a[N - 1];
  v[N - 1] = -a[N - 2];
  double length = turned.Norm();
  if (Gk_Func::equal(length, 0.0, Gk_Def::FuzzReal)) {
    v[1] = 1.0;
    length = 1.0;
  }
  Point result;
  for (int i = 0; i < N; ++i) result.ChangeCoordinates()[position[i]] = v[i] / length;
  return result;
}
