// How far a translation is, for whoever wants to know.
#pragma once

#include "Gk_ObsWraper.h"
#include "Progress.h"

// Tells each stage on two roads: to the progress observers of OBSERVABLE, by setStringInfo with the stage's name,
// setMax with STEPS, setDone with the steps done, and setOver; and to the listeners of the event bus, by a
// VRELThirdPartyProgressEvent with the part of the stage that is done, from 0 to 1. Each step is told once.
class ProgressReporter final : public Progress {
 public:
  static constexpr char OBSERVABLE[] = "brivet/translation";
  static constexpr int STEPS = 100;

  ProgressReporter();

  void Begin(char const* stage, long total) override;
  void Done(long units) override;
  void End() override;

 private:
  void Tell(int steps);

  Gk_ObsWraper observable;
  long units = 0;
  int told = 0;
};
