// Implementation object of VRINUnit.
#pragma once

#include "VRELExport.h"
#include "VRELUnit.h"
#include "VRINObjectImpl.h"
#include "VRINResult.h"

// Holds the number of a unit. The number is not checked.
class VREL_EXPORT VRINUnitImpl : public VRINObjectImpl {
 public:
  VRINUnitImpl(VRELUnit& held);

  // Copies the unit out. Returns VREL_S_OK.
  VRINResult GetUnit(VRELUnit& out) const;
  // Replaces the unit. Returns VREL_S_OK.
  VRINResult SetUnit(VRELUnit const& newUnit);

 private:
  VRELUnit unit;
};
