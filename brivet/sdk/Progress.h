// Receiver for the progress of a long operation.
#pragma once

// Each stage consists of Begin, any number of Done and End; stages do not overlap. The unit is up to the operation.
// This class itself ignores everything.
class Progress {
 public:
  Progress() = default;
  Progress(Progress const&) = delete;
  Progress& operator=(Progress const&) = delete;
  virtual ~Progress() = default;

  // `stage` is shown to the user: "reading".
  virtual void Begin(char const* /*stage*/, long /*total*/) {}
  virtual void Done(long /*units*/) {}
  virtual void End() {}
};
