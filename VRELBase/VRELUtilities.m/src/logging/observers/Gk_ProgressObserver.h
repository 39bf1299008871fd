// Who is told how far a phase of work has come.
#pragma once

#include "Gk_Observer.h"
#include "VRELExport.h"

class Gk_String;

// An observer of type 3: what draws a progress bar, for instance. What the numbers count is the worker's.
class VREL_EXPORT Gk_ProgressObserver : public Gk_Observer {
 public:
  // A phase begins; how many steps it has.
  virtual void setMax(int steps) = 0;
  // How many of them are done.
  virtual void setDone(int steps) = 0;
  // The phase is over; the processor time that it took.
  virtual void setOver(double seconds) = 0;
  virtual void setIntInfo(int value) = 0;
  virtual void setDoubleInfo(double value) = 0;
  // The text is good until the return.
  virtual void setStringInfo(Gk_String const& value) = 0;

 protected:
  ~Gk_ProgressObserver() = default;
};
