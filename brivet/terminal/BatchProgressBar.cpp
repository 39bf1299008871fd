#include "BatchProgressBar.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr int kBarWidth = 40;
constexpr double kLeastPart = 0.02;  // for an estimate of the time
constexpr std::chrono::milliseconds kInterval(100);

// "0:42", "12:05", "3:00:00".
std::string Duration(double seconds) {
  long const rounded = std::lround(std::min(seconds, 3.6e8));
  char text[48];
  if (rounded < 3600) {
    std::snprintf(text, sizeof text, "%ld:%02ld", rounded / 60, rounded % 60);
  } else {
    std::snprintf(text, sizeof text, "%ld:%02ld:%02ld", rounded / 3600, rounded / 60 % 60, rounded % 60);
  }
  return text;
}

}  // namespace

BatchProgressBar::BatchProgressBar(bool isVisible, std::size_t totalFiles, long totalBytes)
    : isEnabled(isVisible), files(totalFiles), bytes(totalBytes) {}

void BatchProgressBar::Update(std::size_t doneFiles, long doneBytes) {
  Clock::time_point const now = Clock::now();
  if (!isEnabled || (width != 0 && now - drawn < kInterval)) return;
  drawn = now;
  std::string const text = Text(doneFiles, files, doneBytes, bytes, std::chrono::duration<double>(now - begin).count());
  std::fprintf(stderr, "\r%-*s", static_cast<int>(width), text.c_str());
  width = std::max(width, text.size());
}

void BatchProgressBar::Hide() {
  if (width != 0) std::fprintf(stderr, "\r%*s\r", static_cast<int>(width), "");
  width = 0;
}

std::string BatchProgressBar::Text(std::size_t doneFiles, std::size_t totalFiles, long doneBytes, long totalBytes,
                                   double elapsedSeconds) {
  // Empty files count as well, so that the bar ends at 100%.
  double const done = static_cast<double>(doneBytes) + static_cast<double>(doneFiles);
  double const total = static_cast<double>(totalBytes) + static_cast<double>(totalFiles);
  double const part = total > 0 ? std::clamp(done / total, 0.0, 1.0) : 1.0;
  int const filled = static_cast<int>(part * kBarWidth);
  char line[128];
  std::snprintf(line, sizeof line, "%zu of %zu files [%.*s%*s] %3d%%", doneFiles, totalFiles, filled,
                "########################################", kBarWidth - filled, "", static_cast<int>(part * 100));
  std::string text = line;
  if (part >= kLeastPart && part < 1) text += ", " + Duration(elapsedSeconds * (1 - part) / part) + " left";
  return text;
}
