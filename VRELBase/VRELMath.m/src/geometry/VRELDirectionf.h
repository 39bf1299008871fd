// The single-precision unit direction.
#pragma once

#include "VRELExport.h"
#include "VRELPointf.h"
#include "VRELVectorf.h"

// A plain value of three floats of length 1. Each way to make one normalizes, and gives the X axis for what has no
// length, which is promised: see VRELVectorf::Normalize.
class VREL_EXPORT VRELDirectionf {
 public:
  // The X axis.
  constexpr VRELDirectionf() noexcept : x(1.0F), y(0.0F), z(0.0F) {}
  VRELDirectionf(float theX, float theY, float theZ) noexcept;
  // From three floats; null gives the X axis.
  explicit VRELDirectionf(float const* coordinates) noexcept;
  VRELDirectionf(VRELVectorf const& vector) noexcept;
  // From the first point to the second.
  VRELDirectionf(VRELPointf const& first, VRELPointf const& second) noexcept;

  constexpr float X() const noexcept { return x; }
  constexpr float Y() const noexcept { return y; }
  constexpr float Z() const noexcept { return z; }

  // Takes out what rounding has left.
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
// The vector product with a vector or direction is that of VRELVectorf, to which a direction converts.
