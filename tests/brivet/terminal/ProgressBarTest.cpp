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

// Takes the line away.
std::string Blank(std::size_t letters) {
  return "\r" + std::string(letters, ' ') + "\r";
}

constexpr std::size_t READING = 7 + 2 + 40 + 2 + 4;  // letters of a line

}  // namespace

TEST(ProgressBarTest, DrawsWhatIsTold) {
  ProgressBar const bar;
  ProgressReporter progress;
  testing::internal::CaptureStderr();
  progress.Begin("reading", 1000);
  progress.Done(250);
  progress.Done(1000);
  progress.End();
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            Line("reading", 0, "  0%") + Line("reading", 10, " 25%") + Line("reading", 40, "100%") + Blank(READING));
}

// A warning has a line of its own, and the bar goes on behind it.
TEST(ProgressBarTest, MakesWay) {
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
                                                        Blank(READING) + "brivet: warning: odd\n" +
                                                        Line("reading", 20, " 50%") + Blank(READING));
}

// An interrupted stage leaves no half a line, and nobody draws behind the bar's end.
TEST(ProgressBarTest, LeavesNothing) {
  ProgressReporter progress;
  testing::internal::CaptureStderr();
  {
    ProgressBar const bar;
    progress.Begin("reading", 2);
  }
  progress.Done(2);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), Line("reading", 0, "  0%") + Blank(READING));
}
