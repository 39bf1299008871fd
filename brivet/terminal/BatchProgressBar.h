// Progress bar for several translations.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

// Draws the progress of all translations on the line of the cursor on standard error, with the time left if the rest
// takes as long for each byte as what is done. The time is shown from 2% on; the first files say little about large
// ones. The line is redrawn at most ten times a second:
//
//   3 of 12 files [##########                              ]  25%, 0:42 left
class BatchProgressBar {
 public:
  // A bar that is not visible draws nothing.
  BatchProgressBar(bool isVisible, std::size_t totalFiles, long totalBytes);
  ~BatchProgressBar() { Hide(); }
  BatchProgressBar(BatchProgressBar const&) = delete;
  BatchProgressBar& operator=(BatchProgressBar const&) = delete;

  // Draws the bar. The bytes include those that are done of files in work.
  void Update(std::size_t doneFiles, long doneBytes);
  // Clears the line for other output. The next update draws it again.
  void Hide();

  // Returns the text of the bar.
  static std::string Text(std::size_t doneFiles, std::size_t totalFiles, long doneBytes, long totalBytes,
                          double elapsedSeconds);

 private:
  using Clock = std::chrono::steady_clock;

  bool const isEnabled;
  std::size_t const files;
  long const bytes;
  Clock::time_point const begin = Clock::now();
  Clock::time_point drawn;
  std::size_t width = 0;  // of the line as drawn; 0 if it is clear
};
