// Formatting of dates.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

// Formats dates as strings.
//
//   VRELString month;
//   VRELString date;
//   VRELDate::GetMonthStr(7, month);
//   VRELDate::FormatDate(L"14", month, L"2026", date);  // "JUL 14 2026"
//
// Errors: all functions return VREL_E_FAIL on failure and then leave `out` unchanged.
class VREL_EXPORT VRELDate {
 public:
  // Returns "month day year", separated by single blanks. Fails if one of the strings is empty.
  static VRINResult FormatDate(VRELString const& day, VRELString const& month, VRELString const& year, VRELString& out);

  // Returns "JAN" to "DEC" for 1 to 12. Fails for any other number.
  static VRINResult GetMonthStr(int month, VRELString& out);

  // Returns date and time in UTC as by "%c" of strftime, from seconds since the beginning of 1970. Fails if the year
  // does not fit an int.
  static VRINResult FormatDate(long seconds, VRELString& out);
};
