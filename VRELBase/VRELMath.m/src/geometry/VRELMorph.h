// Base class of the transformations of points.
#pragma once

#include "VRELAffine.h"
#include "VRELExport.h"
#include "VRELPoint.h"

class VRELStreamFormatter;

// Transformation p' = s (A p) + t with a scale s, a square matrix A and a translation t. Use VRELMorph2D and
// VRELMorph3D; use this base class in code that does not depend on the dimension:
//
//   double ScaledLength(VRELMorph const& morph, double length) { return morph.scaleFactor() * length; }
//
// Three flags record which parts have an effect. They decide, and not the numbers, what is applied to a point.
// fixMorphFlags() sets all flags from the numbers; setScale and FixScaleFactor set only the flag of the scale.
//
// Ownership: delete a morph through its own type; this destructor is not virtual.
class VREL_EXPORT VRELMorph {
 public:
  // Multiplies the scale by `factor`; see the derived classes for the translation.
  virtual void setScale(double factor) = 0;
  // Set `out` to the inverse, or to the composition with `other`. An `out` of another dimension is left unchanged. The
  // numbers are not checked: a scale of 0 results in infinities.
  virtual void Inverse(VRELMorph& out) const = 0;
  virtual void Multiply(VRELMorph const& other, VRELMorph& out) const = 0;
  // Returns true if the scales are equal within Gk_Def::FuzzReal, and translations and matrices within Gk_Def::FuzzPos.
  // Flags are not compared.
  virtual bool isEqual(VRELMorph const& other) const = 0;
  // Return references to the members, like translation() and affine() of the derived classes.
  virtual VRELPoint const& GetTranslation() const = 0;
  virtual VRELAffine const& GetAffine() const = 0;

  double scaleFactor() const noexcept { return scale; }
  // Return true if the part has an effect according to its flag.
  bool isScale() const noexcept { return !unitScale; }
  bool isAffine() const noexcept { return !identityAffine; }
  bool isTranslation() const noexcept { return !zeroTranslation; }
  // Returns true if no part has an effect according to the flags.
  bool isIdentity() const noexcept { return unitScale && identityAffine && zeroTranslation; }

  // Polls for an abort and returns true if the determinant of the matrix is negative. Asserts that it is 1 or -1.
  bool isMirror() const;

  // Sets the flags from the numbers. The scale has no effect if it is exactly 1.0, the matrix if VRELAffine::IsIdentity
  // returns true, the translation if its length is 0 within Gk_Def::FuzzPos.
  void fixMorphFlags();

 protected:
  // Creates a morph of scale 1 in which no part has an effect.
  VRELMorph() noexcept : scale(1.0), unitScale(true), identityAffine(true), zeroTranslation(true) {}
  // Stores the scale.
  // Requires: the derived class calls fixMorphFlags().
  explicit VRELMorph(double theScale) noexcept : VRELMorph() { scale = theScale; }
  VRELMorph(VRELMorph const& other) noexcept = default;
  VRELMorph& operator=(VRELMorph const& other) noexcept = default;
  // Compatibility: not virtual. A morph is a value and is not deleted through this base class.
  ~VRELMorph() = default;

  // Returns true if `length` is 0 within Gk_Def::FuzzPos.
  static bool IsZeroLength(double length) noexcept;

  double scale;
  bool unitScale;
  bool identityAffine;
  bool zeroTranslation;
};

// Writes the morph as an indented block with these lines: "{ ", "Affine:", the rows of the matrix, "Translation: " with
// the point, "Scale: " with the number, "}".
VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELMorph const& morph);
