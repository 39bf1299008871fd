#include "VRELLocalNumericLocaleOverride.h"

#include <clocale>

VRELLocalNumericLocaleOverride::VRELLocalNumericLocaleOverride() {
  InitializeNumericLocale();
}

VRELLocalNumericLocaleOverride::~VRELLocalNumericLocaleOverride() {
  RestoreNumericLocale();
}

VRELString VRELLocalNumericLocaleOverride::InitializeNumericLocale() {
  if (SaveCurrentNumericLocale().IsFailure()) return VRELString();
  return VRELString(std::setlocale(LC_NUMERIC, "C"));
}

VRINResult VRELLocalNumericLocaleOverride::SaveCurrentNumericLocale() {
  savedLocale = VRELString(std::setlocale(LC_ALL, nullptr));
  return savedLocale.length() > 0 ? VREL_S_OK : VREL_E_FAIL;
}

VRINResult VRELLocalNumericLocaleOverride::RestoreNumericLocale() {
  // setlocale would take an empty name for the locale of the environment.
  if (savedLocale.length() < 1) return VREL_E_FAIL;
  char* name = nullptr;
  VRINResult result = VRELStringToChars(savedLocale, name);
  if (result.IsSuccess() && std::setlocale(LC_NUMERIC, name) == nullptr) result = VREL_E_FAIL;
  VRELReleaseChars(name);
  return result;
}
