// Observer of integers.
#pragma once

#include "Gk_Observer.h"
#include "VRELExport.h"

// Observer of type 0: integers.
class VREL_EXPORT Gk_IntObserver : public Gk_Observer {
 public:
  virtual void setInt(int value) = 0;

 protected:
  ~Gk_IntObserver() = default;
};
