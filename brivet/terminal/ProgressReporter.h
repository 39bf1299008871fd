// Progress of a translation, for observers and listeners of the library.
#pragma once

#include "Gk_ObsWraper.h"
#include "Progress.h"

// Reports each stage in two ways, each step once: to the progress observers of kObservable, by setStringInfo with the
// name of the stage, setMax with kSteps, setDone with the steps done, and setOver; and on the event bus, by a
// VRELThirdPartyProgressEvent with the part of the stage that is done, from 0 to 1.
class ProgressReporter final : public Progress {
 public:
  static constexpr char kObservable[] = "brivet/translation";
  static constexpr int kSteps = 100;

  ProgressReporter();

  void Begin(char const* stage, long total) override;
  void Done(long units) override;
  void End() override;

 private:
  void Report(int steps);

  Gk_ObsWraper observable;
  long units = 0;
  int reported = 0;
};
