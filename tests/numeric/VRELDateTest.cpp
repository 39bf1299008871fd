#include "VRELDate.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <string>

#include "ChildProcess.h"

namespace {

VRELString Text(char const* ascii) {
  return VRELString(ascii, VRELString::CODEPAGE_NAME_ASCII);
}

TEST(VRELDateTest, JoinsMonthDayAndYear) {
  VRELString out;
  EXPECT_EQ(VRELDate::FormatDate(Text("17"), Text("AUG"), Text("2004"), out), VREL_S_OK);
  EXPECT_EQ(out.toUtf8(), "AUG 17 2004");
}

TEST(VRELDateTest, ResultMayBeArgument) {
  VRELString day = Text("17");
  EXPECT_EQ(VRELDate::FormatDate(day, Text("AUG"), day, day), VREL_S_OK);
  EXPECT_EQ(day.toUtf8(), "AUG 17 17");
}

TEST(VRELDateTest, EmptyStringFails) {
  VRELString const empty;
  VRELString const some = Text("1");
  VRELString out = Text("before");
  EXPECT_EQ(VRELDate::FormatDate(empty, some, some, out), VREL_E_FAIL);
  EXPECT_EQ(VRELDate::FormatDate(some, empty, some, out), VREL_E_FAIL);
  EXPECT_EQ(VRELDate::FormatDate(some, some, empty, out), VREL_E_FAIL);
  EXPECT_EQ(out.toUtf8(), "before");
}

TEST(VRELDateTest, MonthNames) {
  char const* const names[] = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN", "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
  int month = 0;
  for (char const* name : names) {
    VRELString out;
    EXPECT_EQ(VRELDate::GetMonthStr(++month, out), VREL_S_OK);
    EXPECT_EQ(out.toUtf8(), name);
  }
}

TEST(VRELDateTest, OtherMonthsFail) {
  VRELString out = Text("before");
  for (int month : {0, 13, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(VRELDate::GetMonthStr(month, out), VREL_E_FAIL) << month;
  }
  EXPECT_EQ(out.toUtf8(), "before");
}

TEST(VRELDateTest, SecondsAreDatesInUtc) {
  ASSERT_STREQ(std::setlocale(LC_TIME, nullptr), "C");
  VRELString out;
  EXPECT_EQ(VRELDate::FormatDate(0L, out), VREL_S_OK);
  EXPECT_EQ(out.toUtf8(), "Thu Jan  1 00:00:00 1970");
  EXPECT_EQ(VRELDate::FormatDate(951782400L, out), VREL_S_OK);
  EXPECT_EQ(out.toUtf8(), "Tue Feb 29 00:00:00 2000");
  EXPECT_EQ(VRELDate::FormatDate(-1L, out), VREL_S_OK);
  EXPECT_EQ(out.toUtf8(), "Wed Dec 31 23:59:59 1969");
}

TEST(VRELDateTest, IgnoresTimeZone) {
  ChildResult const child = RunInChild([] {
    setenv("TZ", "EAST-5", 1);
    tzset();
    VRELString out;
    VRELDate::FormatDate(0L, out);
    std::printf("%s", out.toUtf8().c_str());
    return 0;
  });
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
  EXPECT_EQ(child.output, "Thu Jan  1 00:00:00 1970");
}

TEST(VRELDateTest, YearBeyondIntFails) {
  VRELString out = Text("before");
  EXPECT_EQ(VRELDate::FormatDate(std::numeric_limits<long>::max(), out), VREL_E_FAIL);
  EXPECT_EQ(VRELDate::FormatDate(std::numeric_limits<long>::min(), out), VREL_E_FAIL);
  EXPECT_EQ(out.toUtf8(), "before");
}

}  // namespace
