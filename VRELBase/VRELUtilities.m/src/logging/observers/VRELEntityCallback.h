// Observer of entities.
#pragma once

#include "Gk_Observer.h"
#include "VRELExport.h"

// Observer of type 4: entities.
class VREL_EXPORT VRELEntityCallback : public Gk_Observer {
 public:
  // Returns EntityType.
  Type getType() const override;

  // The worker and the application agree on what the pointers point to.
  virtual void setEntityCallback(void* first, void* second) = 0;

 protected:
  ~VRELEntityCallback() = default;
};
