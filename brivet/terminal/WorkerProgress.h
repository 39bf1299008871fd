// Progress of a worker process.
#pragma once

#include "Progress.h"
#include "VRELOutputStream.h"

// Writes a byte kMark for each step of a translation to the stream that gets the report, before the report, which
// begins with another byte. A translation has kStages stages of the same number of steps, kSteps in all; a failure can
// end it earlier. Everything is passed on to another receiver.
class WorkerProgress final : public Progress {
 public:
  static constexpr char kMark = '\x01';
  static constexpr int kSteps = 100;
  static constexpr int kStages = 2;  // reading and writing

  // The receiver and the stream must outlive the object.
  WorkerProgress(Progress& nextReceiver, VRELOutputStream& reportStream) : next(nextReceiver), stream(reportStream) {}

  void Begin(char const* stage, long total) override;
  void Done(long done) override;
  void End() override;

 private:
  // Writes marks until `steps` are written.
  void Mark(int steps);

  Progress& next;
  VRELOutputStream& stream;
  long units = 1;
  int stages = 0;  // that have begun
  int marked = 0;
};
