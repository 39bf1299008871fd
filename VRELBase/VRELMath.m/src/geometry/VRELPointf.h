// The single-precision point.
#pragma once

#include "VRELExport.h"

class VRELVectorf;

// A plain value of three floats: a place, as apart from a free vector (VRELVectorf) and a unit direction
// (VRELDirectionf), which say by their type what moves and what turns. Include VRELVectorf.h for sums with vectors.
class VREL_EXPORT VRELPointf {
 public:
  // The origin.
  constexpr VRELPointf() noexcept : VRELPointf(0.0F, 0.0F, 0.0F) {}
  constexpr VRELPointf(float theX, float theY, float theZ) noexcept : x(theX), y(theY), z(theZ) {}
  // From three floats; null gives the origin.
  explicit VRELPointf(float const* coordinates) noexcept;

  constexpr float X() const noexcept { return x; }
  constexpr float Y() const noexcept { return y; }
  constexpr float Z() const noexcept { return z; }
  // Copies three floats out; does nothing for null.
  void GetValue(float* out) const noexcept;

  VRELPointf operator+(VRELVectorf const& vector) const noexcept;
  VRELPointf operator-(VRELVectorf const& vector) const noexcept;
  // The vector that leads from the other point to this one.
  VRELVectorf operator-(VRELPointf const& other) const noexcept;

  // Whether the x values are equal, and the y values and the z values both differ. That a point is never equal to
  // itself is promised.
  bool operator==(VRELPointf const& other) const noexcept;

  // The Euclidean distance, and the sum of the absolute differences.
  float DistanceTo(VRELPointf const& other) const noexcept;
  float DistanceL1To(VRELPointf const& other) const noexcept;

  // Replace each coordinate of this point by the smaller, or larger, of the two.
  void GetMinimum(VRELPointf const& other) noexcept;
  void GetMaximum(VRELPointf const& other) noexcept;

 private:
  float x;
  float y;
  float z;
};

// The origin.
extern VREL_EXPORT VRELPointf const VRELPointOf;
