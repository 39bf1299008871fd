#include "VRINUnit.h"

#include <cstddef>
#include <iterator>

#include "VRELString.h"
#include "VRELUnitValue.h"
#include "VRINUnitImpl.h"

namespace {

constexpr char const* kNames[] = {"unknown",    "model",     "nanometer", "micrometer", "millimeter",
                                  "centimeter", "decimeter", "meter",     "inch",       "foot",
                                  "mile",       "kilometer", "milliinch", "microinch"};

}  // namespace

VRINUnit::VRINUnit() : VRINObject("VRINUnit") {
  SetUnit(VRELUnitUnknown);
}

VRINUnit::VRINUnit(VRINUnitValue value) : VRINObject("VRINUnit") {
  SetUnit(static_cast<VRELUnit>(value));
}

VRINUnit::VRINUnit(char const* text) : VRINObject("VRINUnit") {
  VRELUnit unit = VRELUnitUnknown;
  VRELUnitValue::GetUnitFromString(unit, VRELString(text));
  SetUnit(unit);
}

VRINUnit& VRINUnit::operator=(VRINUnit const& other) {
  SetData(other.GetData());
  return *this;
}

VRINUnit::operator char const*() const {
  auto const* const impl = GetImpl<VRINUnitImpl>();
  if (impl == nullptr) return "Unknown";
  VRELUnit unit = VRELUnitUnknown;
  impl->GetUnit(unit);
  auto const index = static_cast<std::size_t>(unit);
  return index < std::size(kNames) ? kNames[index] : nullptr;
}

VRINUnit::operator VRINUnitValue() const {
  VRELUnit unit = VRELUnitUnknown;
  if (auto const* const impl = GetImpl<VRINUnitImpl>()) impl->GetUnit(unit);
  return static_cast<VRINUnitValue>(unit);
}

void VRINUnit::SetUnit(VRELUnit unit) {
  SetImpl(new VRINUnitImpl(unit));
}
