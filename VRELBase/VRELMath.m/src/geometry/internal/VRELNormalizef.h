// Square roots and normalization in single precision.
#pragma once

#include <cmath>

// Return the square root and its reciprocal. The result is NaN below 0; the reciprocal is infinite for 0.
inline float VRELSqrtf(float x) noexcept {
  return std::sqrt(x);
}
inline float VRELInvSqrtf(float x) noexcept {
  return 1.0F / std::sqrt(x);
}

// Lengths and squared lengths up to this value are taken as 0: the float nearest to 1e-14, bits 0x283424DC.
inline constexpr float kZeroLengthf = 1e-14F;

// Scales (x, y, z) to the length 1.
// Compatibility: a vector of zero length becomes (1, 0, 0).
inline void vrelNormalizef(float& x, float& y, float& z) noexcept {
  float const square = x * x + y * y + z * z;
  if (square <= kZeroLengthf) {
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
