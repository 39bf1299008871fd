// Common implementation of VRELMorph2D and VRELMorph3D.
#pragma once

#include "Gk_Def.h"
#include "Gk_Func.h"
#include "VRELMorph.h"

// Matrix and translation of a morph, as a CRTP base class of `Morph`. The order of composition and setScale differ and
// are in the derived classes.
template <class Morph, class Affine, class Point>
class VRELMorphOf : public VRELMorph {
 public:
  Affine const& affine() const noexcept { return affinePart; }
  Point const& translation() const noexcept { return translationPart; }
  Affine const& GetAffine() const override { return affinePart; }
  Point const& GetTranslation() const override { return translationPart; }

  // Sets scale, matrix, translation and flags to those of the identity.
  void SetToIdentity() {
    scale = 1.0;
    translationPart = Point();
    affinePart.MakeIdentity();
    fixMorphFlags();
  }

  // Sets `out`, which may be this morph, to the inverse: scale 1 / s, the transposed matrix and the matching
  // translation.
  // Compatibility: the matrix is taken as orthogonal without a check.
  void Inverse(VRELMorph& out) const override;
  // Returns the inverse, computed by the virtual Inverse.
  Morph inverse() const {
    Morph result;
    Inverse(result);
    return result;
  }
  // Returns the composition, computed by the virtual Multiply.
  Morph multiply(VRELMorph const& other) const {
    Morph result;
    this->Multiply(other, result);
    return result;
  }

  bool isEqual(VRELMorph const& other) const override {
    return Gk_Func::equal(scale, other.scaleFactor(), Gk_Def::FuzzReal) &&
           translationPart.IsWithinTolerance(other.GetTranslation(), Gk_Def::FuzzPos) &&
           affinePart == other.GetAffine();
  }

 protected:
  // Creates the identity with all flags set.
  VRELMorphOf() noexcept { affinePart.MakeIdentity(); }
  explicit VRELMorphOf(double theScale) : VRELMorph(theScale) {
    affinePart.MakeIdentity();
    fixMorphFlags();
  }
  explicit VRELMorphOf(Point const& theTranslation) noexcept : translationPart(theTranslation) {
    affinePart.MakeIdentity();
    zeroTranslation = IsZeroLength(translationPart.Length());
  }
  VRELMorphOf(Affine const& theAffine, Point const& theTranslation, double theScale)
      : VRELMorph(theScale), affinePart(theAffine), translationPart(theTranslation) {
    fixMorphFlags();
  }
  VRELMorphOf(VRELMorphOf const& other) noexcept = default;
  VRELMorphOf& operator=(VRELMorphOf const& other) noexcept = default;
  ~VRELMorphOf() = default;

  // Sets this morph to the one that applies `first` and then `second`; it may be one of the two.
  void Compose(VRELMorphOf const& first, VRELMorphOf const& second);

  Affine affinePart;
  Point translationPart;
};

// Solves p' = s (A p) + t for p with A^-1 = A^T: p = 1/s (A^T p') + A^T (t / -s). The result is computed in local
// variables first, so that `out` may be this morph.
template <class Morph, class Affine, class Point>
void VRELMorphOf<Morph, Affine, Point>::Inverse(VRELMorph& out) const {
  auto* const target = dynamic_cast<VRELMorphOf*>(&out);
  if (target == nullptr) return;
  double const divisor = -scale;
  Point inverted;
  for (int i = 0; i < inverted.GetDimension(); ++i) inverted[i] = translationPart.GetCoordinates()[i] / divisor;
  Affine transposed;
  affinePart.GetTranspose(transposed);
  inverted.Transform(transposed);
  target->affinePart = transposed;
  target->translationPart = inverted;
  target->scale = 1.0 / scale;
  target->fixMorphFlags();
}

template <class Morph, class Affine, class Point>
void VRELMorphOf<Morph, Affine, Point>::Compose(VRELMorphOf const& first, VRELMorphOf const& second) {
  Affine product;
  second.affinePart.Multiply(first.affinePart, product);
  Point moved(first.translationPart);
  moved.Transform(static_cast<Morph const&>(second), false);
  scale = first.scale * second.scale;
  affinePart = product;
  translationPart = moved;
  fixMorphFlags();
}
