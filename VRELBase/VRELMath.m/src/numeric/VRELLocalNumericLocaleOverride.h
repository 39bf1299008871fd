// Scope in which the C library formats numbers as in the locale "C".
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

// Sets the numeric locale to "C" for the lifetime of the object, so that printf and strtod use "." as the decimal mark.
//
//   VRELLocalNumericLocaleOverride const numericLocale;
//   std::fprintf(file, "%f", value);
//
// Compatibility: the name of all categories together is saved, and restored to the numeric category only. If the
// categories differ, that name is not valid for a single category, and the numeric locale stays "C" after the scope.
// Thread safety: none. The locale is a setting of the process.
class VREL_EXPORT VRELLocalNumericLocaleOverride {
 public:
  // Calls InitializeNumericLocale and ignores a failure.
  VRELLocalNumericLocaleOverride();
  // Calls RestoreNumericLocale and ignores a failure.
  ~VRELLocalNumericLocaleOverride();
  VRELLocalNumericLocaleOverride(VRELLocalNumericLocaleOverride const&) = delete;
  VRELLocalNumericLocaleOverride& operator=(VRELLocalNumericLocaleOverride const&) = delete;

  // Saves the current locale and sets the numeric locale to "C". Returns the name of the new numeric locale; empty if
  // saving failed, and then nothing is set.
  VRELString InitializeNumericLocale();
  // Saves the name of the current locale.
  // Errors: VREL_E_FAIL if it has no name.
  VRINResult SaveCurrentNumericLocale();
  // Sets the numeric locale to the saved name.
  // Errors: VREL_E_FAIL if no name was saved or no locale has that name.
  VRINResult RestoreNumericLocale();

 private:
  VRELString savedLocale;
};
