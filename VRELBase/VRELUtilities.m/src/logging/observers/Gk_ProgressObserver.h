// Observer of the progress of a phase.
#pragma once

#include "Gk_Observer.h"
#include "VRELExport.h"

class Gk_String;

// Observer of type 3: progress, for example a progress bar. The worker decides what the numbers count.
class VREL_EXPORT Gk_ProgressObserver : public Gk_Observer {
 public:
  // Called at the start of a phase with its number of steps.
  virtual void setMax(int steps) = 0;
  // Called with the number of finished steps.
  virtual void setDone(int steps) = 0;
  // Called at the end of a phase with the processor time that it took.
  virtual void setOver(double seconds) = 0;
  virtual void setIntInfo(int value) = 0;
  virtual void setDoubleInfo(double value) = 0;
  // `value` is valid until the call returns.
  virtual void setStringInfo(Gk_String const& value) = 0;

 protected:
  ~Gk_ProgressObserver() = default;
};
