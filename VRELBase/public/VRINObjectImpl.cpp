#include "VRINObjectImpl.h"

#include <algorithm>
#include <string>

namespace {

// Converts the type name without the default codepage where it is ASCII. ICU determines the default codepage on its
// first use and keeps it, and the static names are created before main, when the process has not yet set its locale.
VRELString TypeText(char const* type) {
  std::string const text(type != nullptr ? type : "");
  bool const isAscii = std::all_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
  return isAscii ? VRELString(type, VRELString::CODEPAGE_NAME_ASCII) : VRELString(type);
}

}  // namespace

int VRINObjectImpl::_objectCounter = 0;

VRINObjectImpl::VRINObjectImpl(char const* type) {
  _objectCounter = static_cast<int>(static_cast<unsigned int>(_objectCounter) + 1);
  name = TypeText(type) + VRELString("[" + std::to_string(_objectCounter) + "]");
}

VRINObjectImpl::~VRINObjectImpl() = default;
