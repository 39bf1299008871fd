// How affines and morphs act on coordinates, for all kinds of points.
#pragma once

#include "VRELAffine.h"

// The N coordinates of a point, 2 or 3, while it is worked on. A point is read once and written once: steps that went
// through its memory would wait for each other.
template <int N>
class VRELHeldCoordinates {
 public:
  explicit VRELHeldCoordinates(double const* p) noexcept : x(p[0]), y(p[1]), z(N == 3 ? p[N - 1] : 0.0) {}

  void Store(double* p) const noexcept {
    p[0] = x;
    p[1] = y;
    if constexpr (N == 3) p[2] = z;
  }

  // Each row of A times p, summed from left to right.
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
  VRELHeldCoordinates<N> held(p);
  held.Apply(affine);
  held.Store(p);
}

// Replaces the N coordinates p by s (A p) + w t, as far as the flags of the morph say that there is something to apply.
// The weight w is 1 for a point without a weight.
template <int N, class Morph>
inline void vrelApplyMorph(Morph const& morph, bool noTranslation, double weight, double* p) noexcept {
  if (morph.isIdentity()) return;
  VRELHeldCoordinates<N> held(p);
  if (morph.isAffine()) held.Apply(morph.affine());
  if (morph.isScale()) held.Multiply(morph.scaleFactor());
  if (!noTranslation && morph.isTranslation()) held.AddMultiple(morph.translation().GetCoordinates(), weight);
  held.Store(p);
}
