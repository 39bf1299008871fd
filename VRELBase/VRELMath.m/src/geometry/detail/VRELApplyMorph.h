// Application of affines and morphs to coordinates, for all kinds of points.
#pragma once

#include "VRELAffine.h"

// The N coordinates of a point, 2 or 3, loaded into local variables. A point is read once and written once: steps that
// wrote to the point in memory would have to wait for each other (store forwarding).
template <int N>
class VRELLocalCoordinates {
 public:
  explicit VRELLocalCoordinates(double const* p) noexcept : x(p[0]), y(p[1]), z(N == 3 ? p[N - 1] : 0.0) {}

  void Store(double* p) const noexcept {
    p[0] = x;
    p[1] = y;
    if constexpr (N == 3) p[2] = z;
  }

  // Multiplies each row of A by p and adds the products from left to right.
  void Apply(VRELAffine const& affine) noexcept {
    VRELAffine::Elements const& a = affine.GetElements();
    double const u = x;
    double const v = y;
    if constexpr (N == 3) {
      double const w = z;
      x = a[0][0] * u + a[0][1] * v + a[0][2] * w;
      y = a[1][0] * u + a[1][1] * v + a[1][2] * w;
      z = a[2][0] * u + a[2][1] * v + a[2][2] * w;
    } else {
      x = a[0][0] * u + a[0][1] * v;
      y = a[1][0] * u + a[1][1] * v;
    }
  }

  void Multiply(double factor) noexcept {
    x *= factor;
    y *= factor;
    if constexpr (N == 3) z *= factor;
  }

  void AddMultiple(double const* t, double factor) noexcept {
    x += t[0] * factor;
    y += t[1] * factor;
    if constexpr (N == 3) z += t[2] * factor;
  }

 private:
  double x;
  double y;
  double z;
};

// Replaces the N coordinates p by A p.
template <int N>
inline void vrelApplyAffine(VRELAffine const& affine, double* p) noexcept {
  VRELLocalCoordinates<N> local(p);
  local.Apply(affine);
  local.Store(p);
}

// Replaces the N coordinates p by s (A p) + w t, leaving out the parts that have no effect according to the flags of
// the morph. The weight w is 1 for a point without a weight.
template <int N, class Morph>
inline void vrelApplyMorph(Morph const& morph, bool noTranslation, double weight, double* p) noexcept {
  if (morph.isIdentity()) return;
  VRELLocalCoordinates<N> local(p);
  if (morph.isAffine()) local.Apply(morph.affine());
  if (morph.isScale()) local.Multiply(morph.scaleFactor());
  if (!noTranslation && morph.isTranslation()) local.AddMultiple(morph.translation().GetCoordinates(), weight);
  local.Store(p);
}
