#include "VRINOptionName.h"

#include "VRELOptionConstants.h"
#include "VRELString.h"

namespace {

VRELString JoinByDot(VRELString const& head, VRELString const& tail) {
  return head + VRELString(static_cast<unsigned short>(VREL_OPTION_SEPARATOR)) + tail;
}

}  // namespace

VRINOptionName::VRINOptionName(char const* name) : VRINName(name) {}

VRINOptionName::VRINOptionName(VRINOptionName const& other) : VRINName(GetText(other)) {}

VRINOptionName::VRINOptionName(VRINComponentName const& component, VRINOptionName const& option)
    : VRINName(JoinByDot(GetText(component), GetText(option))) {}

VRINOptionName::VRINOptionName(VRINComponentName const& component, VRINRepresentationName const& representation,
                               VRINOptionName const& option)
    : VRINName(JoinByDot(JoinByDot(GetText(component), GetText(representation)), GetText(option))) {}

VRINOptionName::VRINOptionName(VRINComponentName const& component, VRINRepresentationName const& representation,
                               VRINReaderWriterName const& direction, VRINOptionName const& option)
    : VRINName(JoinByDot(JoinByDot(JoinByDot(GetText(component), GetText(representation)), GetText(direction)),
                         GetText(option))) {}
