// Public handle of a length unit.
#pragma once

#include "VRELExport.h"
#include "VRELUnit.h"
#include "VRINObject.h"
#include "VRINUnitValue.h"

// Length unit, stored by its number. Always valid.
//
//   VRINUnit const unit("mm");
//   VRINUnitValue const value = unit;  // VRINUnitMillimeter
//   char const* const name = unit;     // "millimeter"
class VREL_EXPORT VRINUnit : public VRINObject {
 public:
  // Creates the unknown unit.
  VRINUnit();
  // Creates a unit from any number; the number is not checked.
  VRINUnit(VRINUnitValue value);
  // Creates a unit from a name ("millimeter", "model unit") or an abbreviation ("mm", "in", "ft"). Case is ignored. Any
  // other string, or null, creates the unknown unit.
  VRINUnit(char const* text);
  VRINUnit(VRINUnit const& other) = default;

  // Shares the implementation object of `other`.
  VRINUnit& operator=(VRINUnit const& other);

  // Returns the name in lower case, or null for a number outside the enumeration.
  //
  // Compatibility: returns "unknown" for the unknown unit and "Unknown", capitalized, for an invalid handle.
  operator char const*() const;
  // Returns the number, or VRINUnitUnknown for an invalid handle.
  operator VRINUnitValue() const;

 private:
  void SetUnit(VRELUnit unit);
};
