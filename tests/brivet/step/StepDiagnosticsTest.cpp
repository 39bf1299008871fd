#include "StepDiagnostics.h"

#include <gtest/gtest.h>

#include "RecordingListener.h"

TEST(StepDiagnosticsTest, ReportsNameLocation) {
  RecordingListener listener;
  StepDiagnostics diagnostics("100%.stp");
  diagnostics.Warn(12, 5, "expected this, found that");
  diagnostics.Error(0, 0, "worse", "do better");
  diagnostics.Note("known");
  EXPECT_EQ(listener.Texts(), (std::vector<std::string>{"100%.stp:12:5: warning: expected this, found that",
                                                        "100%.stp: error: worse\nhint: do better", "100%.stp: known"}));
  EXPECT_EQ(listener.events[0].name, "VRELWarningEvent");
  EXPECT_EQ(listener.events[1].name, "VRELErrorEvent");
  EXPECT_EQ(listener.events[2].name, "VRELMessageEvent");
}

TEST(StepDiagnosticsTest, SendsHundredOfEachKind) {
  RecordingListener listener;
  StepDiagnostics diagnostics("a");
  for (int i = 0; i < 101; ++i) diagnostics.Error(1, 1, "e");
  for (int i = 0; i < 102; ++i) {
    EXPECT_EQ(diagnostics.SendsWarning(), i < 100);
    diagnostics.Warn(1, 1, "w");
  }
  diagnostics.CountWarning();
  EXPECT_EQ(listener.events.size(), 200U);
  diagnostics.ReportSuppressed();
  ASSERT_EQ(listener.events.size(), 202U);
  EXPECT_EQ(listener.events[200].text, "a: warning: 3 more warnings were not shown");
  EXPECT_EQ(listener.events[201].text, "a: error: 1 more error was not shown");
  diagnostics.ReportSuppressed();
  diagnostics.Warn(2, 1, "again");
  EXPECT_EQ(listener.events.size(), 203U);
}
