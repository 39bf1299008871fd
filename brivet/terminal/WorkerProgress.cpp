#include "WorkerProgress.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace {

constexpr int kStepsOfStage = WorkerProgress::kSteps / WorkerProgress::kStages;

}  // namespace

void WorkerProgress::Begin(char const* stage, long total) {
  units = std::max(total, 1L);
  stages = std::min(stages + 1, kStages);
  Mark((stages - 1) * kStepsOfStage);
  next.Begin(stage, total);
}

void WorkerProgress::Done(long done) {
  double const part = static_cast<double>(std::clamp(done, 0L, units)) / static_cast<double>(units);
  Mark((stages - 1) * kStepsOfStage + static_cast<int>(part * kStepsOfStage));
  next.Done(done);
}

void WorkerProgress::End() {
  next.End();
}

void WorkerProgress::Mark(int steps) {
  if (steps <= marked) return;
  std::string const marks(static_cast<std::size_t>(steps - marked), kMark);
  marked = steps;
  stream.write(marks.data(), static_cast<int>(marks.size()));
  stream.flush();
}
