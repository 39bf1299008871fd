// Length unit as a name and a factor.
#pragma once

#include "Gk_String.h"
#include "VRELExport.h"

// Length unit with a name and its size in millimetres, the older representation. VRELUnit is the newer one;
// GetVRELUnitFromGkUnit and GetGkUnitFromVRELUnit convert between them.
//
//   double const millimetres = 2.0 * Gk_Unit::inch.mapTo(Gk_Unit::mm);  // 50.8
//
// Units of the same size are equal, also if their names differ.
class VREL_EXPORT Gk_Unit {
 public:
  static Gk_Unit const meter;
  static Gk_Unit const cm;
  static Gk_Unit const mm;
  static Gk_Unit const inch;
  // Compatibility: the doubles of foot, yard and mile are one unit in the last place below 304.8, 914.4 and 1609344.
  static Gk_Unit const foot;
  static Gk_Unit const yard;
  static Gk_Unit const mile;
  // 1/1000 and 1/1000000 inch; the name of `uinch` is "microinch".
  static Gk_Unit const mils;
  static Gk_Unit const uinch;
  // Their names are "micron" and "decimeter".
  static Gk_Unit const micr;
  static Gk_Unit const deci;
  static Gk_Unit const km;

  // Creates an unset unit: the name "unset" and the size -1.
  Gk_Unit();
  // Creates a unit of `value` millimetres. A null name is taken as the empty name.
  Gk_Unit(char const* name, double value);

  // Returns the size in millimetres.
  double getValue() const noexcept { return millimetres; }
  Gk_String const& getName() const noexcept { return unitName; }

  // Returns true if the size is above 0 and the name is not "unset".
  bool IsSet() const;

  // Returns true if the sizes are equal within Gk_Def::FuzzReal; names are not compared.
  bool operator==(Gk_Unit const& other) const noexcept;
  bool operator!=(Gk_Unit const& other) const noexcept { return !(*this == other); }

  // Returns the factor that converts lengths in this unit to `target`; never negative.
  double mapTo(Gk_Unit const& target) const noexcept;

 private:
  double millimetres;
  Gk_String unitName;
};
