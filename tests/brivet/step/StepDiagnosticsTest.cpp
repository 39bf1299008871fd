#include "StepDiagnostics.h"

#include <gtest/gtest.h>

#include "RecordingListener.h"

TEST(StepDiagnosticsTest, NamesTheFileAndTheLine) {
  RecordingListener listener;
  StepDiagnostics problems("100%.stp");
  problems.Warn(12, "expected this, found that");
  problems.Error(0, "worse");
  EXPECT_EQ(listener.Texts(), (std::vector<std::string>{"100%.stp:12: expected this, found that", "100%.stp: worse"}));
  EXPECT_EQ(listener.events[0].name, "VRELWarningEvent");
  EXPECT_EQ(listener.events[1].name, "VRELErrorEvent");
}

TEST(StepDiagnosticsTest, TellsAHundredOfEachKindAndHowManyMoreThereWere) {
  RecordingListener listener;
  StepDiagnostics problems("a");
  for (int i = 0; i < 101; ++i) problems.Error(1, "e");
  for (int i = 0; i < 103; ++i) problems.Warn(1, "w");
  EXPECT_EQ(listener.events.size(), 200U);
  problems.ReportSuppressed();
  ASSERT_EQ(listener.events.size(), 202U);
  EXPECT_EQ(listener.events[200].text, "a: 3 more warnings of this kind");
  EXPECT_EQ(listener.events[201].text, "a: 1 more errors of this kind");
  problems.ReportSuppressed();
  problems.Warn(2, "again");
  EXPECT_EQ(listener.events.size(), 203U);
}
