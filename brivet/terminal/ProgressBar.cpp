#include "ProgressBar.h"

#include <algorithm>
#include <cstdio>

#include "Gk_ObservableDoc.h"
#include "Gk_String.h"
#include "ProgressReporter.h"

namespace {

constexpr int WIDTH = 40;

}  // namespace

ProgressBar::ProgressBar() {
  Gk_ObservableDoc::addObservable(ProgressReporter::OBSERVABLE, Gk_Observer::ProgressType);
  Gk_ObservableDoc::attachObserver(ProgressReporter::OBSERVABLE, this);
}

ProgressBar::~ProgressBar() {
  Gk_ObservableDoc::removeObserver(ProgressReporter::OBSERVABLE, this);
  Hide();
}

void ProgressBar::Hide() {
  if (shown != 0) std::fprintf(stderr, "\r%*s\r", static_cast<int>(shown), "");
  shown = 0;
}

void ProgressBar::setMax(int maximum) {
  steps = std::max(maximum, 1);
}

void ProgressBar::setDone(int done) {
  long const part = std::clamp(done, 0, steps);
  int const filled = static_cast<int>(part * WIDTH / steps);
  char line[64];
  std::snprintf(line, sizeof line, " [%.*s%*s] %3d%%", filled, "########################################",
                WIDTH - filled, "", static_cast<int>(part * 100 / steps));
  std::string const text = stage + line;
  std::fprintf(stderr, "\r%s", text.c_str());
  shown = std::max(shown, text.size());
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
