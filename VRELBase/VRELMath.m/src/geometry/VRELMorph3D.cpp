#include "VRELMorph3D.h"

#include <cmath>

#include "Gk_Func.h"
#include "VRELAssemblyComponentTransform.h"

VRELMorph3D::VRELMorph3D(double theScale) : VRELMorphOf(theScale) {}

VRELMorph3D::VRELMorph3D(VRELPoint3D const& theTranslation) noexcept : VRELMorphOf(theTranslation) {}

VRELMorph3D::VRELMorph3D(VRELAffine3D const& theAffine, VRELPoint3D const& theTranslation, double theScale)
    : VRELMorphOf(theAffine, theTranslation, theScale) {}

// Rodrigues' rotation formula: A = cos I + (1 - cos) u u^T + sin [u]x, where [u]x is the matrix of the vector product
// with u. Off the diagonal, [u]x has the third coordinate of u, with opposite signs above and below the diagonal.
VRELMorph3D::VRELMorph3D(VRELPoint3D const& axis, double angle) {
  VRELPoint3D const unit = axis.Normalize();
  double const* const u = unit.GetCoordinates();
  double const s = std::sin(angle);
  double const c = std::cos(angle);
  double const t = 1.0 - c;
  for (int i = 0; i < 3; ++i) {
    affinePart.SetElement(i, i, t * u[i] * u[i] + c);
    for (int j = i + 1; j < 3; ++j) {
      int const k = (3 - (i + j) % 3) % 3;
      double const sign = Gk_Func::isEven(i + j) ? 1.0 : -1.0;
      affinePart.SetElement(i, j, t * u[i] * u[j] + sign * s * u[k]);
      affinePart.SetElement(j, i, t * u[j] * u[i] - sign * s * u[k]);
    }
  }
  fixMorphFlags();
}

// Compatibility: the flags are not set from the numbers.
VRELMorph3D::VRELMorph3D(VRELAssemblyComponentTransform const& placement) {
  affinePart.Initialize(0.0);
  double values[12];
  if (placement.Get(values) == 0) {
    for (int column = 0; column < 3; ++column) affinePart.SetColumn(column, values + 3 * column);
    translationPart = VRELPoint3D(values + 9);
  }
  placement.GetScale(scale);
}

void VRELMorph3D::setScale(double factor) {
  scale *= factor;
  unitScale = Gk_Func::equal(scale, 1.0, Gk_Def::FuzzReal);
}

void VRELMorph3D::FixScaleFactor() noexcept {
  if (unitScale) return;
  translationPart *= scale;
  scale = 1.0;
  unitScale = true;
}

// Compatibility: composes in the opposite order of VRELMorph2D.
void VRELMorph3D::Multiply(VRELMorph const& other, VRELMorph& out) const {
  auto const* const second = dynamic_cast<VRELMorph3D const*>(&other);
  auto* const target = dynamic_cast<VRELMorph3D*>(&out);
  if (second != nullptr && target != nullptr) target->Compose(*this, *second);
}

void Transform(double& x, double& y, double& z, VRELMorph3D const& morph, bool noTranslation) {
  VRELPoint3D point(x, y, z);
  point.Transform(morph, noTranslation);
  x = point.GetCoordinates()[0];
  y = point.GetCoordinates()[1];
  z = point.GetCoordinates()[2];
}
