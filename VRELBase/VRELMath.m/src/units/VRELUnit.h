// Length units by number, and the units that a translation goes from and to.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

class Gk_Unit;

// VRINUnitValue, which applications see, has the same numbers.
enum VRELUnit : int {
  VRELUnitUnknown = 0,
  VRELUnitModel = 1,  // the unit that the model is written in, whatever it is
  VRELUnitNanometer = 2,
  VRELUnitMicrometer = 3,
  VRELUnitMillimeter = 4,
  VRELUnitCentimeter = 5,
  VRELUnitDecimeter = 6,
  VRELUnitMeter = 7,
  VRELUnitInch = 8,
  VRELUnitFoot = 9,
  VRELUnitMile = 10,
  VRELUnitKilometer = 11,
  VRELUnitMilliinch = 12,
  VRELUnitMicroinch = 13
};

// VREL_S_OK for the numbers 0 to 13, VREL_E_ERROR for all others.
VREL_EXPORT VRINResult CheckUnit(VRELUnit unit);

// The name in capitals. "UNKNOWN" and "MODELUNIT" come with VREL_E_ERROR, as they are no units; for a number outside
// the enumeration `name` stays as it is.
VREL_EXPORT VRINResult GetUnitName(VRELUnit unit, VRELString& name);

// Metres in one unit. 0 and VREL_E_ERROR for what has none: unknown, the model unit, numbers outside the enumeration.
// Foot and mile are promised to be one place below 0.3048 and 1609.344.
VREL_EXPORT VRINResult GetUnitScaleFactor(VRELUnit unit, double& factor);

// The unit of so many metres: the first whose factor is off by less than 1e-10, or 1e-5 for metre and mile. For any
// other number `unit` is unknown with VREL_S_OK; but 0 and negative numbers leave it, with VREL_E_ERROR.
VREL_EXPORT VRINResult GetVRELUnit(double factor, VRELUnit& unit);

// The unit of the same size, as GetVRELUnit finds it; unknown where that fails.
VREL_EXPORT VRINResult GetVRELUnitFromGkUnit(Gk_Unit const& from, VRELUnit& unit);

// A unit of the same size with the name that GetUnitName gives. A failure of that or of GetUnitScaleFactor leaves `to`.
VREL_EXPORT VRINResult GetGkUnitFromVRELUnit(VRELUnit const& from, Gk_Unit& to);

// The units of the systems that a translation reads from and writes to, for the whole process; the model unit until
// they are set. Always VREL_S_OK.
VREL_EXPORT VRINResult get_sending_system_unit(VRELUnit& unit);
VREL_EXPORT VRINResult get_receiving_system_unit(VRELUnit& unit);

// VREL_E_ERROR, and nothing changes, for a number outside the enumeration.
VREL_EXPORT VRINResult set_sending_system_unit(VRELUnit unit);
VREL_EXPORT VRINResult set_receiving_system_unit(VRELUnit unit);
// The caller's variable itself becomes the setting: a change in it changes the unit, and it must live until another
// one is set. VREL_E_ERROR, and nothing changes, for null or a number outside the enumeration.
VREL_EXPORT VRINResult set_sending_system_unit(VRELUnit* unit);
VREL_EXPORT VRINResult set_receiving_system_unit(VRELUnit* unit);

// Sets both, each as far as it can be. Always VREL_S_OK.
VREL_EXPORT VRINResult set_internal_unit(VRELUnit sending, VRELUnit receiving);
// For writing from the application's unit to the write unit of VRELUnitValue, for reading from the read unit to the
// application's.
VREL_EXPORT VRINResult set_internal_unit(bool writing);

// Frees those of the two settings that were made by value when the process ends, and leaves the model unit there. That
// a caller's variable is neither touched nor let go is promised.
class VREL_EXPORT ReleaseUnits {
 public:
  ~ReleaseUnits();
};
extern VREL_EXPORT ReleaseUnits releaseUnits;
