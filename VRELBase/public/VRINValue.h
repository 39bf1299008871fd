// The value that an application hands to the library, or gets from it.
#pragma once

#include "VRELExport.h"
#include "VRINObject.h"

// A boolean, an integer, a double, a text, or nothing yet; always valid. It can be read as each of these kinds, by the
// conversions of VRELValue: a double reads as the integer 1 or 0. What cannot be converted reads as false, 0 or 0.0.
//
//   VRINValue const tolerance(0.01);
//   VRINValue shared(true);
//   shared = tolerance;  // one value now, behind two handles
class VREL_EXPORT VRINValue : public VRINObject {
 public:
  enum ValueType : int { BoolType, IntType, DoubleType, StringType };

  VRINValue();
  VRINValue(bool value);
  VRINValue(int value);
  VRINValue(double value);
  // Text in the process's default codepage, and in wide characters; null counts as empty.
  VRINValue(char const* value);
  VRINValue(wchar_t const* value);
  VRINValue(VRINValue const& other) = default;

  // Shares the other's value.
  VRINValue& operator=(VRINValue const& other);

  // The kind of the value; BoolType where there is none. That this read alone does not ask IsValid() is promised.
  ValueType GetType() const;

  operator bool() const;
  operator int() const;
  operator double() const;
  // The value as text in the process's default codepage, and in wide characters; null where there is none. It is valid
  // as long as a handle holds the value.
  operator char const*() const;
  operator wchar_t const*() const;
};
