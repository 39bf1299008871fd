// Single-precision unit direction.
#pragma once

#include "VRELExport.h"
#include "VRELPointf.h"
#include "VRELVectorf.h"

// Unit vector of three floats, a plain value type. Every constructor but the copy constructor normalizes.
//
//   VRELDirectionf const direction(0.0F, 3.0F, 4.0F);  // 0, 0.6, 0.8
//
// Compatibility: a vector whose squared length is at most 1e-14 becomes the X axis; see VRELVectorf::Normalize.
class VREL_EXPORT VRELDirectionf {
 public:
  // Creates the X axis.
  constexpr VRELDirectionf() noexcept : x(1.0F), y(0.0F), z(0.0F) {}
  VRELDirectionf(float theX, float theY, float theZ) noexcept;
  // Reads three floats; null creates the X axis.
  explicit VRELDirectionf(float const* coordinates) noexcept;
  VRELDirectionf(VRELVectorf const& vector) noexcept;
  // Creates the direction from `first` to `second`.
  VRELDirectionf(VRELPointf const& first, VRELPointf const& second) noexcept;

  constexpr float X() const noexcept { return x; }
  constexpr float Y() const noexcept { return y; }
  constexpr float Z() const noexcept { return z; }

  // Scales the direction to the length 1 again, to remove rounding errors.
  void Normalize() noexcept;

  VRELDirectionf operator-() const noexcept {
    VRELDirectionf opposite(*this);
    opposite.x = -x;
    opposite.y = -y;
    opposite.z = -z;
    return opposite;
  }
  VRELVectorf operator*(float factor) const noexcept { return VRELVectorf(x * factor, y * factor, z * factor); }

 private:
  float x;
  float y;
  float z;
};

inline VRELVectorf operator*(float factor, VRELDirectionf const& direction) noexcept {
  return direction * factor;
}
// The vector product with a vector or direction is operator^ of VRELVectorf, to which a direction converts.
