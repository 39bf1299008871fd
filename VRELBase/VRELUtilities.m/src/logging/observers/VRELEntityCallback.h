// Who is told of entities.
#pragma once

#include "Gk_Observer.h"
#include "VRELExport.h"

// An observer of type 4.
class VREL_EXPORT VRELEntityCallback : public Gk_Observer {
 public:
  // EntityType.
  Type getType() const override;

  // What the pointers point at is settled between the worker and the application.
  virtual void setEntityCallback(void* first, void* second) = 0;

 protected:
  ~VRELEntityCallback() = default;
};
