// Conversions between narrow strings of the older layers and VRELString.
#pragma once

#include <string>

#include "Gk_String.h"
#include "VRELString.h"

// Returns the string in the default codepage of the process; empty if it cannot be converted.
inline Gk_String VRELNarrowText(VRELString const& text) {
  char* bytes = nullptr;
  VRELStringToChars(text, bytes);
  Gk_String narrow(bytes);
  VRELReleaseChars(bytes);
  return narrow;
}

// Returns the bytes up to the first zero byte, decoded in the default codepage of the process.
inline VRELString VRELWideText(Gk_String const& text) {
  return VRELString(std::string(text.text()).c_str());
}
