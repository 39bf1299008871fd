// Units of the four roles in a translation, and units as strings.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRELUnit.h"
#include "VRINResult.h"

// Unit settings of the process, one for each role in a translation. Setters store any value unchecked.
//
//   VRELUnit unit = VRELUnitUnknown;
//   if (VRELUnitValue::GetUnitFromString(unit, L"mm").IsSuccess()) VRELUnitValue::SetWriteUnit(unit);
//   set_internal_unit(true);  // from the application unit to the write unit
//
// Thread safety: none.
class VREL_EXPORT VRELUnitValue {
 public:
  // Unit of the file that is read; initially VRELUnitUnknown.
  static VRELUnit GetReadUnit();
  static void SetReadUnit(VRELUnit unit);
  // Unit that is assumed if the file specifies none; initially VRELUnitUnknown.
  static VRELUnit GetUnitWhenUnspecified();
  static void SetUnitWhenUnspecified(VRELUnit unit);
  // Unit of the application; initially VRELUnitModel.
  static VRELUnit GetApplicationUnit();
  static void SetApplicationUnit(VRELUnit unit);
  // Unit of the file that is written; initially VRELUnitModel.
  static VRELUnit GetWriteUnit();
  static void SetWriteUnit(VRELUnit unit);

  // Finds a unit by its name or abbreviation ("mm", "in", "ft"), ignoring case.
  //
  // Errors: VREL_E_FAIL, with `unit` unchanged, for any other string.
  static VRINResult GetUnitFromString(VRELUnit& unit, VRELString const& text);
  // Returns the name in capitals; that of the model unit is "MODEL UNIT", two words. Leaves `text` unchanged for a
  // value outside the enumeration.
  static void GetUnitAsString(VRELUnit unit, VRELString& text);
};
