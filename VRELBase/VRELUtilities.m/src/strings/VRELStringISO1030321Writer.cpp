#include "VRELStringISO1030321Writer.h"

#include "VRELStringISO10646Writer.h"

VRINResult VRELStringISO1030321Writer::ConvertToASCII(VRELString const& text, char const*& out) {
  VRELString encoded;
  VRINResult result = VRELStringISO10646Writer(text).GetResult(encoded);
  if (result.IsSuccess()) {
    int const size = encoded.getConvertToMBCSSize(VRELString::CODEPAGE_NAME_ASCII);
    if (size > 1) {
      // Compatibility: the previous result is not released.
      auto const bytes = static_cast<std::size_t>(size);
      USAsciiString = new char[bytes];
      result = encoded.convertToMBCS(USAsciiString, size, VRELString::CODEPAGE_NAME_ASCII, false);
    }
  }
  out = USAsciiString;
  return result;
}
