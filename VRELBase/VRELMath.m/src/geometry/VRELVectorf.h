// The single-precision free vector.
#pragma once

#include "VRELExport.h"
#include "VRELPointf.h"

class VRELDirectionf;

// A plain value of three floats: a difference of two places, of any length.
class VREL_EXPORT VRELVectorf {
 public:
  // The zero vector.
  constexpr VRELVectorf() noexcept : VRELVectorf(0.0F, 0.0F, 0.0F) {}
  constexpr VRELVectorf(float theX, float theY, float theZ) noexcept : x(theX), y(theY), z(theZ) {}
  // From three floats; null gives the zero vector.
  explicit VRELVectorf(float const* coordinates) noexcept;
  // From the first point to the second.
  VRELVectorf(VRELPointf const& first, VRELPointf const& second) noexcept
      : VRELVectorf(second.X() - first.X(), second.Y() - first.Y(), second.Z() - first.Z()) {}
  VRELVectorf(VRELDirectionf const& direction) noexcept;

  constexpr float X() const noexcept { return x; }
  constexpr float Y() const noexcept { return y; }
  constexpr float Z() const noexcept { return z; }
  void GetCoord(float& outX, float& outY, float& outZ) const noexcept;
  void SetCoord(float newX, float newY, float newZ) noexcept;

  VRELVectorf operator+(VRELVectorf const& other) const noexcept {
    return VRELVectorf(x + other.x, y + other.y, z + other.z);
  }
  VRELVectorf operator-(VRELVectorf const& other) const noexcept {
    return VRELVectorf(x - other.x, y - other.y, z - other.z);
  }
  VRELVectorf operator-() const noexcept { return VRELVectorf(-x, -y, -z); }
  VRELVectorf operator*(float factor) const noexcept { return VRELVectorf(x * factor, y * factor, z * factor); }
  // Divides also by 0.
  VRELVectorf operator/(float divisor) const noexcept { return VRELVectorf(x / divisor, y / divisor, z / divisor); }
  // The point moved by this vector.
  VRELPointf operator+(VRELPointf const& point) const noexcept { return point + *this; }

  // The Euclidean length.
  float Norm() const noexcept;
  // Makes the length 1. That a vector whose squared length is at most 1e-14 becomes 1, 0, 0 is promised.
  void Normalize() noexcept;

  // The angle between the two in radians, 0 to pi. That it is 0 if one of them is not longer than 1e-14 is promised.
  double AngleTo(VRELVectorf const& other) const noexcept;
  // The angle from this to the other around the reference, 0 to 2 pi: past half a turn where the vector product of the
  // two points away from the reference.
  double AngleTo(VRELVectorf const& other, VRELVectorf const& reference) const noexcept;

 private:
  float x;
  float y;
  float z;
};

inline VRELVectorf operator*(float factor, VRELVectorf const& vector) noexcept {
  return vector * factor;
}
// The scalar product.
inline float operator*(VRELVectorf const& a, VRELVectorf const& b) noexcept {
  return a.X() * b.X() + a.Y() * b.Y() + a.Z() * b.Z();
}
// The vector product.
inline VRELVectorf operator^(VRELVectorf const& a, VRELVectorf const& b) noexcept {
  return VRELVectorf(a.Y() * b.Z() - a.Z() * b.Y(), a.Z() * b.X() - a.X() * b.Z(), a.X() * b.Y() - a.Y() * b.X());
}

// The zero vector and the three axes.
extern VREL_EXPORT VRELVectorf const VRELNullVectorf;
extern VREL_EXPORT VRELVectorf const VRELVectorIf;
extern VREL_EXPORT VRELVectorf const VRELVectorJf;
extern VREL_EXPORT VRELVectorf const VRELVectorKf;
