// Text on its way between the older layer and the wide strings.
#pragma once

#include <string>

#include "Gk_String.h"
#include "VRELString.h"

// The text in the process's default codepage; the empty text where it cannot be converted.
inline Gk_String VRELNarrowText(VRELString const& text) {
  char* bytes = nullptr;
  VRELStringToChars(text, bytes);
  Gk_String narrow(bytes);
  VRELReleaseChars(bytes);
  return narrow;
}

// The text up to its first zero byte, read in that codepage.
inline VRELString VRELWideText(Gk_String const& text) {
  return VRELString(std::string(text.text()).c_str());
}
