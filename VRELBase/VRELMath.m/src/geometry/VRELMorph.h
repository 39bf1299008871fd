// The root of the transformations of points.
#pragma once

#include "VRELAffine.h"
#include "VRELExport.h"
#include "VRELPoint.h"

class VRELStreamFormatter;

// p' = s (A p) + t, with a scale s, a square matrix A and a translation t. Use VRELMorph2D and VRELMorph3D; this class
// is how code that does not care about the dimension sees both.
//
// Three flags remember which of the parts have an effect, and they decide, and not the numbers, what a point is
// subjected to. fixMorphFlags() sets them by the numbers; setScale and FixScaleFactor set the one of the scale alone.
class VREL_EXPORT VRELMorph {
 public:
  virtual void setScale(double factor) = 0;
  // Both write into a morph of the same dimension; one of another dimension is left as it is. Neither tests anything: a
  // scale of 0 gives infinities.
  virtual void Inverse(VRELMorph& out) const = 0;
  virtual void Multiply(VRELMorph const& other, VRELMorph& out) const = 0;
  // Scales equal within Gk_Def::FuzzReal, translations and matrices within Gk_Def::FuzzPos. Flags are not compared.
  virtual bool isEqual(VRELMorph const& other) const = 0;
  // References to the members, as translation() and affine() of the derived classes are.
  virtual VRELPoint const& GetTranslation() const = 0;
  virtual VRELAffine const& GetAffine() const = 0;

  double scaleFactor() const noexcept { return scale; }
  // Whether the part has an effect, by its flag.
  bool isScale() const noexcept { return !unitScale; }
  bool isAffine() const noexcept { return !identityAffine; }
  bool isTranslation() const noexcept { return !zeroTranslation; }
  // Whether no part has.
  bool isIdentity() const noexcept { return unitScale && identityAffine && zeroTranslation; }

  // Whether the determinant of the matrix is below 0. Polls for an abort; the determinant is presumed to be 1 or -1.
  bool isMirror() const;

  // The scale has no effect if it is exactly 1.0, the matrix if it passes VRELAffine::IsIdentity, the translation if
  // its length is 0 within Gk_Def::FuzzPos.
  void fixMorphFlags();

 protected:
  // Scale 1, and no part has an effect.
  VRELMorph() noexcept : scale(1.0), unitScale(true), identityAffine(true), zeroTranslation(true) {}
  // For a derived class that sets the flags itself, by fixMorphFlags().
  explicit VRELMorph(double theScale) noexcept : VRELMorph() { scale = theScale; }
  VRELMorph(VRELMorph const& other) noexcept = default;
  VRELMorph& operator=(VRELMorph const& other) noexcept = default;
  // Not virtual, as promised: a morph is a value and is not deleted by its base.
  ~VRELMorph() = default;

  // Whether the length counts as none.
  static bool IsNoLength(double length) noexcept;

  double scale;
  bool unitScale;
  bool identityAffine;
  bool zeroTranslation;
};

// The margin goes one step in for the block, and each of these has a line: "{ ", "Affine:", the rows of the matrix,
// "Translation: " with the point, "Scale: " with the number, "}".
VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELMorph const& morph);
