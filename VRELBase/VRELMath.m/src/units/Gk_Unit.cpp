#include "Gk_Unit.h"

#include "Gk_Def.h"
#include "Gk_Func.h"

namespace {

constexpr char kUnset[] = "unset";

}  // namespace

Gk_Unit::Gk_Unit() : Gk_Unit(kUnset, -1.0) {}

Gk_Unit::Gk_Unit(char const* name, double value) : millimetres(value), unitName(name) {}

bool Gk_Unit::IsSet() const {
  return millimetres > 0.0 && unitName != kUnset;
}

bool Gk_Unit::operator==(Gk_Unit const& other) const noexcept {
  return Gk_Func::equal(millimetres, other.millimetres, Gk_Def::FuzzReal);
}

double Gk_Unit::mapTo(Gk_Unit const& target) const noexcept {
  return Gk_Func::abs(millimetres / target.millimetres);
}
