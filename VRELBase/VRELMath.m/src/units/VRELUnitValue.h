// The units of the four roles in a translation, and units as text.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRELUnit.h"
#include "VRINResult.h"

// Settings of the whole process. A setter stores any number unchecked.
class VREL_EXPORT VRELUnitValue {
 public:
  // What the file says; unknown at first.
  static VRELUnit GetReadUnit();
  static void SetReadUnit(VRELUnit unit);
  // What is taken where the file says nothing; unknown at first.
  static VRELUnit GetUnitWhenUnspecified();
  static void SetUnitWhenUnspecified(VRELUnit unit);
  // What the application works in; the model unit at first.
  static VRELUnit GetApplicationUnit();
  static void SetApplicationUnit(VRELUnit unit);
  // What is written; the model unit at first.
  static VRELUnit GetWriteUnit();
  static void SetWriteUnit(VRELUnit unit);

  // The unit of a name or of an abbreviation ("mm", "in", "ft"), in any case. VREL_E_FAIL, with `unit` as it was, for
  // any other text.
  static VRINResult GetUnitFromString(VRELUnit& unit, VRELString const& text);
  // The name in capitals, "MODEL UNIT" in two words. A number outside the enumeration leaves `text`.
  static void GetUnitAsString(VRELUnit unit, VRELString& text);
};
