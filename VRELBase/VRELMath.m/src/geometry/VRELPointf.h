// Single-precision point.
#pragma once

#include "VRELExport.h"

class VRELVectorf;

// Point of three floats, a plain value type. Translations apply to it, unlike to a free vector (VRELVectorf) and a unit
// direction (VRELDirectionf).
//
//   VRELPointf const p = VRELPointf(1.0F, 2.0F, 3.0F) + VRELVectorf(0.0F, 0.0F, 1.0F);  // 1, 2, 4
//   float const distance = p.DistanceTo(VRELPointOf);
//
// Include VRELVectorf.h to add and subtract vectors.
class VREL_EXPORT VRELPointf {
 public:
  // Creates the origin.
  constexpr VRELPointf() noexcept : VRELPointf(0.0F, 0.0F, 0.0F) {}
  constexpr VRELPointf(float theX, float theY, float theZ) noexcept : x(theX), y(theY), z(theZ) {}
  // Reads three floats; null creates the origin.
  explicit VRELPointf(float const* coordinates) noexcept;

  constexpr float X() const noexcept { return x; }
  constexpr float Y() const noexcept { return y; }
  constexpr float Z() const noexcept { return z; }
  // Copies the three coordinates to `out`; does nothing if `out` is null.
  void GetValue(float* out) const noexcept;

  VRELPointf operator+(VRELVectorf const& vector) const noexcept;
  VRELPointf operator-(VRELVectorf const& vector) const noexcept;
  // Returns the vector from `other` to this point.
  VRELVectorf operator-(VRELPointf const& other) const noexcept;

  // Returns true if the x values are equal, and the y values and the z values both differ. Use IsEqual to compare
  // points.
  // Compatibility: a point is never equal to itself.
  bool operator==(VRELPointf const& other) const noexcept;
  // Deleted, because the negation of operator== would not compare the points. Use !a.IsEqual(b).
  bool operator!=(VRELPointf const& other) const = delete;
  // Returns true if all three coordinates are exactly equal.
  constexpr bool IsEqual(VRELPointf const& other) const noexcept {
    return x == other.x && y == other.y && z == other.z;
  }

  // Returns the Euclidean distance.
  float DistanceTo(VRELPointf const& other) const noexcept;
  // Returns the sum of the absolute differences of the coordinates.
  float DistanceL1To(VRELPointf const& other) const noexcept;

  // Replaces each coordinate of this point by the smaller one of the two points.
  void GetMinimum(VRELPointf const& other) noexcept;
  // Replaces each coordinate of this point by the larger one of the two points.
  void GetMaximum(VRELPointf const& other) noexcept;

 private:
  float x;
  float y;
  float z;
};

// The origin.
extern VREL_EXPORT VRELPointf const VRELPointOf;
