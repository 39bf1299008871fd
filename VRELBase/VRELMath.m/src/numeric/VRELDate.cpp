#include "VRELDate.h"

#include <ctime>

VRINResult VRELDate::FormatDate(VRELString const& day, VRELString const& month, VRELString const& year,
                                VRELString& out) {
  if (day.length() < 1 || month.length() < 1 || year.length() < 1) return VREL_E_FAIL;
  VRELString const blank(L" ");
  out = month + blank + day + blank + year;
  return VREL_S_OK;
}

VRINResult VRELDate::GetMonthStr(int month, VRELString& out) {
  static constexpr wchar_t const* kNames[] = {L"JAN", L"FEB", L"MAR", L"APR", L"MAY", L"JUN",
                                              L"JUL", L"AUG", L"SEP", L"OCT", L"NOV", L"DEC"};
  if (month < 1 || month > 12) return VREL_E_FAIL;
  out = VRELString(kNames[month - 1]);
  return VREL_S_OK;
}

VRINResult VRELDate::FormatDate(long seconds, VRELString& out) {
  std::time_t const time = seconds;
  std::tm parts;
  char text[256];
  if (gmtime_r(&time, &parts) == nullptr || std::strftime(text, sizeof(text), "%c", &parts) == 0) return VREL_E_FAIL;
  out = VRELString(text);
  return VREL_S_OK;
}
