// Numbers in the C library's neutral form for the length of a scope.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

// While an object lives, the C library prints and reads numbers as in the locale "C", with "." as the decimal mark.
//
//   VRELLocalNumericLocaleOverride const neutral;
//   std::fprintf(file, "%f", value);
//
// What is kept is the name of all the categories of the locale together, and it goes back to the numeric category
// alone. When the categories differ that name stands for no single category, and the numbers stay neutral behind the
// scope too; that is promised. The locale belongs to the process: not for use on several threads.
class VREL_EXPORT VRELLocalNumericLocaleOverride {
 public:
  // Initializes; a failure is dropped.
  VRELLocalNumericLocaleOverride();
  // Restores; a failure is dropped.
  ~VRELLocalNumericLocaleOverride();
  VRELLocalNumericLocaleOverride(VRELLocalNumericLocaleOverride const&) = delete;
  VRELLocalNumericLocaleOverride& operator=(VRELLocalNumericLocaleOverride const&) = delete;

  // Saves the current locale and sets the numeric one to "C". Gives the name of the new numeric locale; empty when
  // nothing was saved, and then nothing is set.
  VRELString InitializeNumericLocale();
  // Keeps the name of the current locale. VREL_E_FAIL when it has none.
  VRINResult SaveCurrentNumericLocale();
  // Sets the numeric locale to the kept name. VREL_E_FAIL when no locale has that name, or none was kept.
  VRINResult RestoreNumericLocale();

 private:
  VRELString savedLocale;
};
