// Single-precision free vector.
#pragma once

#include "VRELExport.h"
#include "VRELPointf.h"

class VRELDirectionf;

// Free vector of three floats, of any length, a plain value type. Translations do not apply to it.
//
//   VRELVectorf const normal = VRELVectorIf ^ VRELVectorJf;             // vector product, 0, 0, 1
//   float const height = normal * VRELVectorf(1.0F, 2.0F, 3.0F);        // scalar product, 3
//   double const angle = VRELVectorIf.AngleTo(VRELVectorJf, normal);  // pi / 2
class VREL_EXPORT VRELVectorf {
 public:
  // Creates the zero vector.
  constexpr VRELVectorf() noexcept : VRELVectorf(0.0F, 0.0F, 0.0F) {}
  constexpr VRELVectorf(float theX, float theY, float theZ) noexcept : x(theX), y(theY), z(theZ) {}
  // Reads three floats; null creates the zero vector.
  explicit VRELVectorf(float const* coordinates) noexcept;
  // Creates the vector from `first` to `second`.
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
  // Divides each coordinate, also by 0.
  VRELVectorf operator/(float divisor) const noexcept { return VRELVectorf(x / divisor, y / divisor, z / divisor); }
  // Returns the point translated by this vector.
  VRELPointf operator+(VRELPointf const& point) const noexcept { return point + *this; }

  // Returns the Euclidean length.
  float Norm() const noexcept;
  // Scales the vector to the length 1.
  // Compatibility: a vector whose squared length is at most 1e-14 becomes 1, 0, 0.
  void Normalize() noexcept;

  // Returns the angle between the two vectors in radians, 0 to pi.
  // Compatibility: returns 0 if the length of one of them is at most 1e-14.
  double AngleTo(VRELVectorf const& other) const noexcept;
  // Returns the angle from this vector to `other` around `reference`, 0 to 2 pi: above pi if the vector product of the
  // two points away from `reference`.
  double AngleTo(VRELVectorf const& other, VRELVectorf const& reference) const noexcept;

 private:
  float x;
  float y;
  float z;
};

inline VRELVectorf operator*(float factor, VRELVectorf const& vector) noexcept {
  return vector * factor;
}
// Returns the scalar product.
inline float operator*(VRELVectorf const& a, VRELVectorf const& b) noexcept {
  return a.X() * b.X() + a.Y() * b.Y() + a.Z() * b.Z();
}
// Returns the vector product.
inline VRELVectorf operator^(VRELVectorf const& a, VRELVectorf const& b) noexcept {
  return VRELVectorf(a.Y() * b.Z() - a.Z() * b.Y(), a.Z() * b.X() - a.X() * b.Z(), a.X() * b.Y() - a.Y() * b.X());
}

// The zero vector and the three axes.
extern VREL_EXPORT VRELVectorf const VRELNullVectorf;
extern VREL_EXPORT VRELVectorf const VRELVectorIf;
extern VREL_EXPORT VRELVectorf const VRELVectorJf;
extern VREL_EXPORT VRELVectorf const VRELVectorKf;
