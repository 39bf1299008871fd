#include "VRELStringISO8859Reader.h"

#include <cstring>

VRELStringISO8859Reader::VRELStringISO8859Reader(char const* text) : encodedString(new char[5]()) {
  if (text != nullptr) std::memcpy(encodedString.get(), text, strnlen(text, 4));
}

void VRELStringISO8859Reader::DetermineEncoding() {
  if (encoding == -1) encoding = std::strncmp(encodedString.get(), "\\S\\", 3) == 0 ? 1 : 0;
}

VRINResult VRELStringISO8859Reader::GetResult(VRELString& out) {
  VRINResult status = VREL_E_FAIL;
  if (encoding == -1) {
    DetermineEncoding();
    if (encoding == 1) {
      result = VRELString(static_cast<unsigned short>(Decode(encodedString[3])));
      status = VREL_S_OK;
    }
  }
  out = result;
  return status;
}
