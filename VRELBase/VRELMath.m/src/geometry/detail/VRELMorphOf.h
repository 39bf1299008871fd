// What the 2D and the 3D morph have in common, written for the types of each.
#pragma once

#include "Gk_Def.h"
#include "Gk_Func.h"
#include "VRELMorph.h"

// The parts of a Morph, its derived class, with the matrix and the translation held by value. The order of composition
// and the setting of the scale are not here: they differ, and stand in the two classes.
template <class Morph, class Affine, class Point>
class VRELMorphOf : public VRELMorph {
 public:
  Affine const& affine() const noexcept { return affinePart; }
  Point const& translation() const noexcept { return translationPart; }
  Affine const& GetAffine() const override { return affinePart; }
  Point const& GetTranslation() const override { return translationPart; }

  void SetToIdentity() {
    scale = 1.0;
    translationPart = Point();
    affinePart.MakeIdentity();
    fixMorphFlags();
  }

  // The scale 1 / s, the transposed matrix and the translation that belongs to them. That the matrix is taken to be
  // orthogonal, whatever it is, is promised. The out object may be this one.
  void Inverse(VRELMorph& out) const override;
  // The new morph, by the virtual Inverse.
  Morph inverse() const {
    Morph result;
    Inverse(result);
    return result;
  }
  // The new morph, by the virtual Multiply.
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
  // The identity, all flags true.
  VRELMorphOf() noexcept { affinePart.MakeIdentity(); }
  explicit VRELMorphOf(double theScale) : VRELMorph(theScale) {
    affinePart.MakeIdentity();
    fixMorphFlags();
  }
  explicit VRELMorphOf(Point const& theTranslation) noexcept : translationPart(theTranslation) {
    affinePart.MakeIdentity();
    zeroTranslation = IsNoLength(translationPart.Length());
  }
  VRELMorphOf(Affine const& theAffine, Point const& theTranslation, double theScale)
      : VRELMorph(theScale), affinePart(theAffine), translationPart(theTranslation) {
    fixMorphFlags();
  }
  VRELMorphOf(VRELMorphOf const& other) noexcept = default;
  VRELMorphOf& operator=(VRELMorphOf const& other) noexcept = default;
  ~VRELMorphOf() = default;

  // Makes this the morph that runs `first` and then `second`; this may be one of them.
  void Compose(VRELMorphOf const& first, VRELMorphOf const& second);

  Affine affinePart;
  Point translationPart;
};

template <class Morph, class Affine, class Point>
void VRELMorphOf<Morph, Affine, Point>::Inverse(VRELMorph& out) const {
  auto* const target = dynamic_cast<VRELMorphOf*>(&out);
  if (target == nullptr) return;
  double const divisor = -scale;
  Point turned;
  for (int i = 0; i < turned.GetDimension(); ++i) turned[i] = translationPart.GetCoordinates()[i] / divisor;
  Affine transposed;
  affinePart.GetTranspose(transposed);
  turned.Transform(transposed);
  target->affinePart = transposed;
  target->translationPart = turned;
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
