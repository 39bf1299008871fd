// What stands behind the public units.
#pragma once

#include "VRELExport.h"
#include "VRELUnit.h"
#include "VRINObjectImpl.h"
#include "VRINResult.h"

// Holds a unit, any number.
class VREL_EXPORT VRINUnitImpl : public VRINObjectImpl {
 public:
  // Copies the unit.
  VRINUnitImpl(VRELUnit& held);

  // Copy the unit out and in; always VREL_S_OK.
  VRINResult GetUnit(VRELUnit& out) const;
  VRINResult SetUnit(VRELUnit const& newUnit);

 private:
  VRELUnit unit;
};
