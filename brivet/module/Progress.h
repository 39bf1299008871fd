// Where a long piece of work tells how far it is.
#pragma once

// One stage at a time: Begin, any number of Done, End. Units are the worker's own.
class Progress {
 public:
  Progress() = default;
  Progress(Progress const&) = delete;
  Progress& operator=(Progress const&) = delete;
  virtual ~Progress() = default;

  // `stage` names the work for people: "reading".
  virtual void Begin(char const* stage, long total) = 0;
  virtual void Done(long units) = 0;
  virtual void End() = 0;
};
