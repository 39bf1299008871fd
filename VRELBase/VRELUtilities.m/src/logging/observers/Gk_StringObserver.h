// Who is told of texts.
#pragma once

#include "Gk_Observer.h"
#include "VRELExport.h"

class Gk_String;

// An observer of type 2.
class VREL_EXPORT Gk_StringObserver : public Gk_Observer {
 public:
  // The text is good until the return.
  virtual void setString(Gk_String const& value) = 0;

 protected:
  ~Gk_StringObserver() = default;
};
