#include "VRINObjectImpl.h"

#include <algorithm>
#include <string>

namespace {

// Objects are made while the library is loaded, when the process has not chosen its locale yet: the default codepage,
// which is settled when it is first asked for, must not be asked for then.
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
