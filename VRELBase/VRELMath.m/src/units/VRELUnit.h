// Length units as an enumeration, and the system units of a translation.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

class Gk_Unit;

// Length unit. The values equal those of the public VRINUnitValue.
//
//   double metres = 0.0;
//   GetUnitScaleFactor(VRELUnitInch, metres);  // 0.0254
//   VRELUnit unit = VRELUnitUnknown;
//   GetVRELUnit(0.001, unit);  // VRELUnitMillimeter
//
// Thread safety: the system units below are settings of the process without locks.
enum VRELUnit : int {
  VRELUnitUnknown = 0,
  VRELUnitModel = 1,  // the unit of the model, not further specified
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

// Returns VREL_S_OK for the values 0 to 13, VREL_E_ERROR for all others.
VREL_EXPORT VRINResult CheckUnit(VRELUnit unit);

// Returns the name in capitals.
//
// Errors: VREL_E_ERROR for the unknown and the model unit, with the names "UNKNOWN" and "MODELUNIT"; VREL_E_ERROR for a
// value outside the enumeration, with `name` unchanged.
VREL_EXPORT VRINResult GetUnitName(VRELUnit unit, VRELString& name);

// Returns the size of the unit in metres.
//
// Errors: VREL_E_ERROR, with `factor` set to 0, for the unknown unit, the model unit and values outside the
// enumeration.
// Compatibility: the doubles of foot and mile are one unit in the last place below 0.3048 and 1609.344.
VREL_EXPORT VRINResult GetUnitScaleFactor(VRELUnit unit, double& factor);

// Finds the unit of the given size in metres: the first one whose factor differs by less than 1e-10, or 1e-5 for metre
// and mile.
//
// Errors: VREL_E_ERROR, with `unit` unchanged, if nothing matches and `factor` is 0 or negative.
// Compatibility: if no unit matches a positive number or NaN, `unit` becomes VRELUnitUnknown and the result is
// VREL_S_OK.
VREL_EXPORT VRINResult GetVRELUnit(double factor, VRELUnit& unit);

// Finds the unit of the same size with GetVRELUnit and returns its result; `unit` is VRELUnitUnknown if that fails.
VREL_EXPORT VRINResult GetVRELUnitFromGkUnit(Gk_Unit const& from, VRELUnit& unit);

// Sets `to` to a unit of the same size with the name of GetUnitName.
//
// Errors: VREL_E_ERROR, with `to` unchanged, if the unit has no size.
VREL_EXPORT VRINResult GetGkUnitFromVRELUnit(VRELUnit const& from, Gk_Unit& to);

// Return the unit of the sending or receiving system; the model unit before it is set. The result is VREL_S_OK.
VREL_EXPORT VRINResult get_sending_system_unit(VRELUnit& unit);
VREL_EXPORT VRINResult get_receiving_system_unit(VRELUnit& unit);

// Set the unit of the sending or receiving system.
//
// Errors: VREL_E_ERROR, without a change, for a value outside the enumeration.
VREL_EXPORT VRINResult set_sending_system_unit(VRELUnit unit);
VREL_EXPORT VRINResult set_receiving_system_unit(VRELUnit unit);
// Set the unit of the sending or receiving system to a variable of the caller: a later change of the variable changes
// the unit.
//
// Requires: the variable exists until another unit is set.
// Errors: VREL_E_ERROR, without a change, for null or a value outside the enumeration.
VREL_EXPORT VRINResult set_sending_system_unit(VRELUnit* unit);
VREL_EXPORT VRINResult set_receiving_system_unit(VRELUnit* unit);

// Sets both system units and ignores invalid values. Returns VREL_S_OK.
VREL_EXPORT VRINResult set_internal_unit(VRELUnit sending, VRELUnit receiving);
// Sets both system units from VRELUnitValue: application unit to write unit if `writing` is set, otherwise read unit to
// application unit.
VREL_EXPORT VRINResult set_internal_unit(bool writing);
// Do not compile: a single unit would convert to bool.
VRINResult set_internal_unit(VRELUnit unit) = delete;
VRINResult set_internal_unit(VRELUnit* unit) = delete;

// Frees the system units that were set by value when the process ends; they read as the model unit afterwards.
// Compatibility: a unit that was set to a variable of the caller is neither freed nor reset.
class VREL_EXPORT ReleaseUnits {
 public:
  ~ReleaseUnits();
};
extern VREL_EXPORT ReleaseUnits releaseUnits;
