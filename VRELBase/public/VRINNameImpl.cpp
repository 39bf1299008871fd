#include "VRINNameImpl.h"

VRINNameImpl::VRINNameImpl(VRELString const& newText) : VRINObjectImpl("VRINName"), text(newText) {}

VRINResult VRINNameImpl::GetName(VRELString& out) const {
  out = text;
  return VREL_S_OK;
}

VRINResult VRINNameImpl::SetName(VRELString const& newText) {
  text = newText;
  return VREL_S_OK;
}
