#include "RunReport.h"

#include <gtest/gtest.h>

#include <clocale>

TEST(RunReportTest, MapsResultsToStatuses) {
  EXPECT_EQ(ExitStatusOf(VREL_S_OK), 0);
  EXPECT_EQ(ExitStatusOf(VREL_S_PARTIAL), 8);
  EXPECT_EQ(ExitStatusOf(VREL_E_ABORTED), 3);
  EXPECT_EQ(ExitStatusOf(VREL_E_FILE_NOT_FOUND), 13);
  EXPECT_EQ(ExitStatusOf(VREL_E_FILE_SAVE), 15);
  EXPECT_EQ(ExitStatusOf(VREL_E_INVALID_FILE), 21);
  // An option that a module cannot use.
  EXPECT_EQ(ExitStatusOf(VREL_E_INVALID_ARGUMENT), 1);
}

TEST(RunReportTest, WritesJson) {
  RunReport report;
  report.input = "a.stp";
  report.output = "a.html";
  report.instances = 3;
  report.dangling = 1;
  report.seconds = 0.25;
  report.bytes = 17;
  EXPECT_EQ(report.ToJson(),
            "{\"input\":\"a.stp\",\"output\":\"a.html\",\"status\":\"success\",\"exit\":0,\"instances\":3,\"lost\":[],"
            "\"dangling\":1,\"seconds\":0.250,\"bytes\":17}\n");
  report.output = "";
  report.exitStatus = 8;
  report.lost = {{7, 9, {"#5", "#6"}, "expected ')', found ';'"}, {12, 12, {}, "x"}};
  EXPECT_EQ(report.ToJson(),
            "{\"input\":\"a.stp\",\"output\":null,\"status\":\"partial\",\"exit\":8,\"instances\":3,\"lost\":["
            "{\"line\":7,\"lastLine\":9,\"instances\":[\"#5\",\"#6\"],\"reason\":\"expected ')', found ';'\"},"
            "{\"line\":12,\"lastLine\":12,\"instances\":[],\"reason\":\"x\"}],"
            "\"dangling\":1,\"seconds\":0.250,\"bytes\":17}\n");
  report.exitStatus = 21;
  EXPECT_NE(report.ToJson().find("\"status\":\"failure\",\"exit\":21,"), std::string::npos);
}

TEST(RunReportTest, EscapesNames) {
  RunReport report;
  report.input = "a\"b\\c\nd\x7F\xC3\xBC\xFF\xE2\x82.stp";
  EXPECT_EQ(report.ToJson().substr(0, 60).rfind(
                "{\"input\":\"a\\\"b\\\\c\\u000ad\\u007f\xC3\xBC\\udcff\\udce2\\udc82.stp\",", 0),
            0U);
}
