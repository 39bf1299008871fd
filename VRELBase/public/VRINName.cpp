#include "VRINName.h"

#include <string_view>

#include "VRINNameImpl.h"

VRINName::VRINName(char const* name) : VRINName(VRELString(name)) {}

VRINName::VRINName(Literal literal) : VRINName(VRELString(std::u16string_view(literal.text))) {}

VRINName::VRINName(VRELString const& name) : VRINObject("VRINName") {
  SetImpl(new VRINNameImpl(name));
}

VRELString VRINName::GetText(VRINName const& name) {
  VRELString text;
  if (auto const* const impl = name.GetDataAs<VRINNameImpl>()) impl->GetName(text);
  return text;
}
