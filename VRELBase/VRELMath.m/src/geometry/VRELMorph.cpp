#include "VRELMorph.h"

#include <cmath>

#include "Gk_Def.h"
#include "Gk_ErrMgr.h"
#include "Gk_Func.h"
#include "VRELStreamFormatter.h"

bool VRELMorph::isMirror() const {
  Gk_ErrMgr::checkAbort();
  double const determinant = GetAffine().Determinant();
  if (!Gk_Func::equal(std::fabs(determinant), 1.0, Gk_Def::FuzzReal)) Gk_ErrMgr::doAssert(__FILE__, __LINE__);
  return determinant < 0.0;
}

// Compatibility: the scale is compared without a tolerance here, but with one in setScale.
void VRELMorph::fixMorphFlags() {
  unitScale = scale == 1.0;
  identityAffine = GetAffine().IsIdentity();
  zeroTranslation = IsZeroLength(GetTranslation().Length());
}

bool VRELMorph::IsZeroLength(double length) noexcept {
  return Gk_Func::equal(length, 0.0, Gk_Def::FuzzPos);
}

VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELMorph const& morph) {
  formatter.margin()->incr();
  formatter << formatter.margin() << "{ " << formatter.endline();
  formatter << formatter.margin() << "Affine:" << formatter.endline();
  formatter << morph.GetAffine();
  formatter << formatter.margin() << "Translation: " << morph.GetTranslation() << formatter.endline();
  formatter << formatter.margin() << "Scale: " << morph.scaleFactor() << formatter.endline();
  formatter << formatter.margin() << "}" << formatter.endline();
  formatter.margin()->decr();
  return formatter;
}
