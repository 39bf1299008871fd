// The older form of a length unit: a name and a factor.
#pragma once

#include "Gk_String.h"
#include "VRELExport.h"

// A unit by its size in millimetres. Two units of one size are equal, whatever their names. See VRELUnit for the units
// that the library knows by number, and for the way from one form to the other.
class VREL_EXPORT Gk_Unit {
 public:
  static Gk_Unit const meter;
  static Gk_Unit const cm;
  static Gk_Unit const mm;
  static Gk_Unit const inch;
  // Foot and mile, and the yard with them, are promised to be one place below 304.8, 1609344 and 914.4.
  static Gk_Unit const foot;
  static Gk_Unit const yard;
  static Gk_Unit const mile;
  // A thousandth and a millionth of an inch.
  static Gk_Unit const mils;
  static Gk_Unit const uinch;
  // "micron" and "decimeter".
  static Gk_Unit const micr;
  static Gk_Unit const deci;
  static Gk_Unit const km;

  // No unit: the name "unset" and a size of -1.
  Gk_Unit();
  // Null stands for the empty name.
  Gk_Unit(char const* name, double value);

  // Millimetres in one of this unit.
  double getValue() const noexcept { return millimetres; }
  Gk_String const& getName() const noexcept { return unitName; }

  // Whether the size is above 0 and the name is not "unset".
  bool IsSet() const;

  // Whether the sizes are equal within Gk_Def::FuzzReal.
  bool operator==(Gk_Unit const& other) const noexcept;
  bool operator!=(Gk_Unit const& other) const noexcept { return !(*this == other); }

  // How many of the target unit make one of this; never negative.
  double mapTo(Gk_Unit const& target) const noexcept;

 private:
  double millimetres;
  Gk_String unitName;
};
