#include "VRINValueImpl.h"

VRINValueImpl::VRINValueImpl(VRELValue const& held) : VRINObjectImpl("VRINValue"), value(held) {}

VRINResult VRINValueImpl::GetValue(VRELValue& out) const {
  out = value;
  return VREL_S_OK;
}

VRINValueImpl::operator char const*() const {
  return static_cast<char const*>(value);
}

VRINValueImpl::operator wchar_t const*() const {
  return static_cast<wchar_t const*>(value);
}
