// Roots and lengths in single precision, for the vectors of floats.
#pragma once

#include <cmath>

// The root, and what it takes to divide by it. Below 0 the result is not a number; the inverse root of 0 is infinite.
inline float VRELSqrtf(float x) noexcept {
  return std::sqrt(x);
}
inline float VRELInvSqrtf(float x) noexcept {
  return 1.0F / std::sqrt(x);
}

// Up to here a length, or the square of one, counts as none: the float nearest to 1e-14.
inline constexpr float vrelNoLengthf = 1e-14F;

// Makes the length of x, y, z 1. That a vector which has no length becomes 1, 0, 0 is promised.
inline void vrelNormalizef(float& x, float& y, float& z) noexcept {
  float const square = x * x + y * y + z * z;
  if (square <= vrelNoLengthf) {
    x = 1.0F;
    y = 0.0F;
    z = 0.0F;
    return;
  }
  float const factor = VRELInvSqrtf(square);
  x *= factor;
  y *= factor;
  z *= factor;
}
