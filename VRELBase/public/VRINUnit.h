// The length unit that an application hands to the library, or gets from it.
#pragma once

#include "VRELExport.h"
#include "VRELUnit.h"
#include "VRINObject.h"
#include "VRINUnitValue.h"

// A unit by its number; always valid.
class VREL_EXPORT VRINUnit : public VRINObject {
 public:
  // The unknown unit.
  VRINUnit();
  // Any number, unchecked.
  VRINUnit(VRINUnitValue value);
  // A name ("millimeter", "model unit") or an abbreviation ("mm", "in", "ft"), in any case; any other text, and null,
  // gives the unknown unit.
  VRINUnit(char const* text);
  VRINUnit(VRINUnit const& other) = default;

  // Shares the other's unit.
  VRINUnit& operator=(VRINUnit const& other);

  // The name in lower case. "unknown" for the unknown unit, "Unknown" for an invalid handle, null for a number outside
  // the enumeration; the capital is promised.
  operator char const*() const;
  // The unknown unit for an invalid handle.
  operator VRINUnitValue() const;

 private:
  void SetUnit(VRELUnit unit);
};
