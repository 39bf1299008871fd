#include "VRELEntityCallback.h"

Gk_Observer::Type VRELEntityCallback::getType() const {
  return EntityType;
}
