#include "ProgressBar.h"

#include <algorithm>
#include <cstdio>

#include "Gk_ObservableDoc.h"
#include "Gk_String.h"
#include "ProgressReporter.h"

namespace {

constexpr int kBarWidth = 40;

}  // namespace

ProgressBar::ProgressBar() {
  Gk_ObservableDoc::addObservable(ProgressReporter::kObservable, Gk_Observer::ProgressType);
  Gk_ObservableDoc::attachObserver(ProgressReporter::kObservable, this);
}

ProgressBar::~ProgressBar() {
  Gk_ObservableDoc::removeObserver(ProgressReporter::kObservable, this);
  Hide();
}

void ProgressBar::Hide() {
  if (width != 0) std::fprintf(stderr, "\r%*s\r", static_cast<int>(width), "");
  width = 0;
}

void ProgressBar::setMax(int maximum) {
  steps = std::max(maximum, 1);
}

void ProgressBar::setDone(int done) {
  long const part = std::clamp(done, 0, steps);
  int const filled = static_cast<int>(part * kBarWidth / steps);
  char line[64];
  std::snprintf(line, sizeof line, " [%.*s%*s] %3d%%", filled, "########################################",
                kBarWidth - filled, "", static_cast<int>(part * 100 / steps));
  std::string const text = stage + line;
  std::fprintf(stderr, "\r%s", text.c_str());
  width = std::max(width, text.size());
}

void ProgressBar::setOver(double /*seconds*/) {
  Hide();
}

void ProgressBar::setIntInfo(int /*value*/) {}

void ProgressBar::setDoubleInfo(double /*value*/) {}

void ProgressBar::setStringInfo(Gk_String const& value) {
  Hide();
  char const* const text = value;
  stage = text != nullptr ? text : "";
}
