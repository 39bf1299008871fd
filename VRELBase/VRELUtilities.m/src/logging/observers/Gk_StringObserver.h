// Observer of strings.
#pragma once

#include "Gk_Observer.h"
#include "VRELExport.h"

class Gk_String;

// Observer of type 2: strings.
class VREL_EXPORT Gk_StringObserver : public Gk_Observer {
 public:
  // `value` is valid until the call returns.
  virtual void setString(Gk_String const& value) = 0;

 protected:
  ~Gk_StringObserver() = default;
};
