#include "VRINUnitImpl.h"

VRINUnitImpl::VRINUnitImpl(VRELUnit& held) : VRINObjectImpl("VRINUnit"), unit(held) {}

VRINResult VRINUnitImpl::GetUnit(VRELUnit& out) const {
  out = unit;
  return VREL_S_OK;
}

VRINResult VRINUnitImpl::SetUnit(VRELUnit const& newUnit) {
  unit = newUnit;
  return VREL_S_OK;
}
