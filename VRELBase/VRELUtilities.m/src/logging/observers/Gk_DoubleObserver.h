// Observer of floating-point numbers.
#pragma once

#include "Gk_Observer.h"
#include "VRELExport.h"

// Observer of type 1: floating-point numbers.
class VREL_EXPORT Gk_DoubleObserver : public Gk_Observer {
 public:
  virtual void setDouble(double value) = 0;

 protected:
  ~Gk_DoubleObserver() = default;
};
