#include "ProgressBar.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "Gk_ObservableDoc.h"
#include "ProgressReporter.h"
#include "StandardErrorListener.h"
#include "VRELWarning.h"

namespace {

std::string Line(char const* stage, int filled, char const* percent) {
  return std::string("\r") + stage + " [" + std::string(static_cast<std::size_t>(filled), '#') +
         std::string(static_cast<std::size_t>(40 - filled), ' ') + "] " + percent;
}

// Clears the line.
std::string Blank(std::size_t width) {
  return "\r" + std::string(width, ' ') + "\r";
}

constexpr std::size_t kLineWidth = 7 + 2 + 40 + 2 + 4;  // of "reading [...] 100%"

}  // namespace

TEST(ProgressBarTest, DrawsReportedProgress) {
  ProgressBar const bar;
  ProgressReporter progress;
  testing::internal::CaptureStderr();
  progress.Begin("reading", 1000);
  progress.Done(250);
  progress.Done(1000);
  progress.End();
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            Line("reading", 0, "  0%") + Line("reading", 10, " 25%") + Line("reading", 40, "100%") + Blank(kLineWidth));
}

TEST(ProgressBarTest, IsHiddenForMessages) {
  ProgressBar bar;
  StandardErrorListener const listener(&bar);
  ProgressReporter progress;
  testing::internal::CaptureStderr();
  VRELWarning::Printf("before");
  progress.Begin("reading", 2);
  VRELWarning::Printf("odd");
  progress.Done(1);
  progress.End();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "brivet: warning: before\n" + Line("reading", 0, "  0%") +
                                                        Blank(kLineWidth) + "brivet: warning: odd\n" +
                                                        Line("reading", 20, " 50%") + Blank(kLineWidth));
}

TEST(ProgressBarTest, DestructorClearsLine) {
  ProgressReporter progress;
  testing::internal::CaptureStderr();
  {
    ProgressBar const bar;
    progress.Begin("reading", 2);
  }
  progress.Done(2);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), Line("reading", 0, "  0%") + Blank(kLineWidth));
}
