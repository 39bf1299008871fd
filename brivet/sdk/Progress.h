// Where a long piece of work tells how far it is.
#pragma once

// One stage at a time: Begin, any number of Done, End. Units are the worker's own. An object of this class itself tells
// nobody.
class Progress {
 public:
  Progress() = default;
  Progress(Progress const&) = delete;
  Progress& operator=(Progress const&) = delete;
  virtual ~Progress() = default;

  // The stage names the work for people: "reading".
  virtual void Begin(char const* /*stage*/, long /*total*/) {}
  virtual void Done(long /*units*/) {}
  virtual void End() {}
};
