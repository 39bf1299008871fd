#include "ProgressReporter.h"

#include <algorithm>

#include "Gk_ObservableDoc.h"
#include "Gk_String.h"
#include "VRELThirdPartyProgressEvent.h"

ProgressReporter::ProgressReporter()
    : observable(Gk_ObservableDoc::addObservable(kObservable, Gk_Observer::ProgressType)) {}

void ProgressReporter::Begin(char const* stage, long total) {
  units = std::max(total, 1L);
  observable.setStringInfo(Gk_String(stage));
  observable.setMax(kSteps);
  Report(0);
}

void ProgressReporter::Done(long done) {
  double const part = static_cast<double>(std::clamp(done, 0L, units)) / static_cast<double>(units);
  int const steps = static_cast<int>(part * kSteps);
  if (steps > reported) Report(steps);
}

void ProgressReporter::End() {
  observable.setOver();
}

void ProgressReporter::Report(int steps) {
  reported = steps;
  observable.setDone(steps);
  VRELThirdPartyProgressEvent::Fire(static_cast<double>(steps) / kSteps);
}
