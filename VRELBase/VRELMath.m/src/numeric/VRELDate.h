// Dates as text.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

// Static functions. Each fails with VREL_E_FAIL and then leaves `out` as it is.
class VREL_EXPORT VRELDate {
 public:
  // "month day year", with one blank between. Fails when one of the texts is empty.
  static VRINResult FormatDate(VRELString const& day, VRELString const& month, VRELString const& year, VRELString& out);

  // "JAN" to "DEC" for 1 to 12. Fails for every other number.
  static VRINResult GetMonthStr(int month, VRELString& out);

  // The date and time in UTC, in the form that the C library's locale prefers, from seconds since the start of 1970.
  // Fails when the year does not fit an int.
  static VRINResult FormatDate(long seconds, VRELString& out);
};
