#include "Gk_LinMap.h"

#include "Gk_Def.h"
#include "Gk_Func.h"

Gk_LinMap::Gk_LinMap(double slope, double offset) noexcept : slopeValue(slope), offsetValue(offset) {
  Classify();
}

double Gk_LinMap::apply(double x) const noexcept {
  if (isUnit) return negates ? -x : x;
  return slopeValue * x + offsetValue;
}

double Gk_LinMap::invert(double y) const noexcept {
  if (Gk_Func::equal(slopeValue, 0.0, Gk_Def::FuzzReal)) return 0.0;
  if (isUnit) return negates ? -y : y;
  return (y - offsetValue) / slopeValue;
}

Gk_LinMap Gk_LinMap::inverse() const noexcept {
  return Gk_LinMap(1.0 / slopeValue, -offsetValue / slopeValue);
}

Gk_LinMap& Gk_LinMap::compose(Gk_LinMap const& other, bool before) noexcept {
  if (other.isIdentity()) return *this;
  offsetValue = before ? other.apply(offsetValue) : apply(other.offsetValue);
  slopeValue *= other.slopeValue;
  Classify();
  return *this;
}

bool Gk_LinMap::operator==(Gk_LinMap const& other) const noexcept {
  return Gk_Func::equal(slopeValue, other.slopeValue, Gk_Def::FuzzReal) &&
         Gk_Func::equal(offsetValue, other.offsetValue, Gk_Def::FuzzReal);
}

void Gk_LinMap::Classify() noexcept {
  isUnit = Gk_Func::equal(Gk_Func::abs(slopeValue), 1.0, Gk_Def::FuzzReal) &&
           Gk_Func::equal(offsetValue, 0.0, Gk_Def::FuzzReal);
  negates = slopeValue < 0.0;
}
