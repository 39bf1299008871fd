#include "BatchProgressBar.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Bar(int filled, std::string const& percent) {
  return "[" + std::string(static_cast<std::size_t>(filled), '#') +
         std::string(static_cast<std::size_t>(40 - filled), ' ') + "] " + percent;
}

}  // namespace

TEST(BatchProgressBarTest, ShowsFilesPartAndTimeLeft) {
  EXPECT_EQ(BatchProgressBar::Text(0, 12, 0, 1000, 5), "0 of 12 files " + Bar(0, "  0%"));
  // A quarter of 1000 bytes and 4 files took 14 seconds.
  EXPECT_EQ(BatchProgressBar::Text(1, 4, 250, 1000, 14), "1 of 4 files " + Bar(10, " 25%, 0:42 left"));
  EXPECT_EQ(BatchProgressBar::Text(2, 4, 500, 1000, 725), "2 of 4 files " + Bar(20, " 50%, 12:05 left"));
  EXPECT_EQ(BatchProgressBar::Text(2, 4, 500, 1000, 10800), "2 of 4 files " + Bar(20, " 50%, 3:00:00 left"));
  EXPECT_EQ(BatchProgressBar::Text(4, 4, 1000, 1000, 10), "4 of 4 files " + Bar(40, "100%"));
  // Small files before a large one are no sample of it.
  EXPECT_EQ(BatchProgressBar::Text(1, 2, 10'000, 139'000'000, 0.2), "1 of 2 files " + Bar(0, "  0%"));
  EXPECT_EQ(BatchProgressBar::Text(1, 3, 17, 998, 5), "1 of 3 files " + Bar(0, "  1%"));
  EXPECT_EQ(BatchProgressBar::Text(1, 3, 20, 998, 5), "1 of 3 files " + Bar(0, "  2%, 3:53 left"));
  // Files without a size count as well.
  EXPECT_EQ(BatchProgressBar::Text(1, 2, 0, 0, 1), "1 of 2 files " + Bar(20, " 50%, 0:01 left"));
}

TEST(BatchProgressBarTest, DrawsOnlyIfVisible) {
  testing::internal::CaptureStderr();
  {
    BatchProgressBar invisible(false, 2, 10);
    invisible.Update(1, 5);
    BatchProgressBar bar(true, 1, 0);
    bar.Update(0, 0);
    bar.Update(0, 0);
  }
  std::string const text = "0 of 1 files " + Bar(0, "  0%");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "\r" + text + "\r" + std::string(text.size(), ' ') + "\r");
}
