// Who is told of real numbers.
#pragma once

#include "Gk_Observer.h"
#include "VRELExport.h"

// An observer of type 1.
class VREL_EXPORT Gk_DoubleObserver : public Gk_Observer {
 public:
  virtual void setDouble(double value) = 0;

 protected:
  ~Gk_DoubleObserver() = default;
};
