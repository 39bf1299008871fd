// How affines and morphs act on coordinates, for all kinds of points.
#pragma once

#include "VRELAffine.h"

// Replaces the N coordinates p by A p.
template <int N>
inline void vrelApplyAffine(VRELAffine const& affine, double* p) noexcept {
  VRELAffine::Elements const& a = affine.GetElements();
  double image[N];
  for (int i = 0; i < N; ++i) {
    image[i] = a[i][0] * p[0];
    for (int j = 1; j < N; ++j) image[i] += a[i][j] * p[j];
  }
  for (int i = 0; i < N; ++i) p[i] = image[i];
}

// Replaces the N coordinates p by s (A p) + w t, as far as the flags of the morph say that there is something to apply.
// The weight w is 1 for a point without a weight.
template <int N, class Morph>
inline void vrelApplyMorph(Morph const& morph, bool noTranslation, double weight, double* p) noexcept {
  if (morph.isIdentity()) return;
  if (morph.isAffine()) vrelApplyAffine<N>(morph.affine(), p);
  if (morph.isScale()) {
    for (int i = 0; i < N; ++i) p[i] *= morph.scaleFactor();
  }
  if (!noTranslation && morph.isTranslation()) {
    double const* const t = morph.translation().GetCoordinates();
    for (int i = 0; i < N; ++i) p[i] += t[i] * weight;
  }
}
