// The tagged value of options, properties and public values.
#pragma once

#include "VRELExport.h"
#include "VRELHashTraits.h"
#include "VRELString.h"
#include "VRINResult.h"

class VRELStreamFormatter;

// A double, an integer, a boolean, a text, or nothing yet. Whatever is held can be read as each other kind, by these
// conversions:
//
//   read as      double           int                       bool                      text
//   from double  itself           1 if not 0.0, else 0      true if not 0.0           as by "%f"
//   from int     the number       itself                    true if not 0             decimal
//   from bool    1.0 or 0.0       1 or 0                    itself                    "true" or "false"
//   from text    1.0 or 0.0 for   1 or 0 for a word of      a word of truth, else     itself
//                a word of truth, truth, else as an         whether the integer that
//                else as a number integer                   it begins with is not 0
//
// Words of truth are Yes, True and On, No, False and Off, in any case. That a double reads as the integer 1 or 0, and
// is never truncated, is promised: options of kind double serve as switches.
//
// A value keeps the plain text forms that it gave out, and so even its constant operations write; it stays on one
// thread. A wide literal would be taken for a bool: wrap it in a VRELString.
class VREL_EXPORT VRELValue {
 public:
  enum VRELValueType : int { UnknownType, DoubleType, IntType, BoolType, StringType };
  // The name of each kind, and a null entry.
  static char const* const VRELValueTypeNames[6];

  // Nothing yet.
  VRELValue();
  VRELValue(bool value);
  VRELValue(int value);
  VRELValue(double value);
  VRELValue(VRELString const& value);
  // The text, read in the process's default codepage, and with its narrow form at hand; null counts as empty.
  VRELValue(char const* value);
  VRELValue(VRELValue const& other);
  ~VRELValue();

  // Takes the other's kind and value, none of the text forms that either gave out. That this object's forms are not
  // released, so that pointers to them stay good, is promised. An assignment to itself drops them and keeps the value.
  VRELValue& operator=(VRELValue const& other);

  // Take the value and its kind; always VREL_S_OK. The text forms that were given out stay as they are.
  VRINResult SetValue(double value);
  VRINResult SetValue(bool value);
  VRINResult SetValue(int value);
  VRINResult SetValue(VRELString const& value);

  // Always VREL_S_OK.
  VRINResult GetValueType(VRELValueType& valueType) const;
  // Whether there is a value.
  bool IsValid() const { return type != UnknownType; }
  // Whether the value is of kind int; what reads as one does not count.
  bool IsInteger() const { return type == IntType; }

  // The value as the kind of the argument, which stays untouched on failure: VREL_E_INVALID_ARGUMENT where there is no
  // value, VREL_E_FAIL for text that is no number.
  VRINResult GetValue(double& value) const;
  VRINResult GetValue(bool& value) const;
  VRINResult GetValue(int& value) const;
  VRINResult GetValue(VRELString& value) const;

  // The value as text in the process's default codepage, and in wide characters; null where there is no value. It stays
  // owned by the value. That the text of the first call is given out for good, whatever SetValue brings later, is
  // promised: callers keep the pointer.
  operator char const*() const;
  operator wchar_t const*() const;

  // Writes the value by its kind, a boolean as the integer 1 or 0; nothing where there is no value.
  void Dump(VRELStreamFormatter& formatter) const;

  // Same kind and same value; texts by case, doubles exactly. Two objects without a value are not equal.
  bool operator==(VRELValue const& other) const;
  bool operator!=(VRELValue const& other) const { return !(*this == other); }

  // A number, truncated toward zero, and a boolean go through the mix below; a text gives its own hash; 0 where there
  // is no value.
  int GetHashCode() const;
  // A mix of 32 bits, with wrap-around sums and arithmetic right shifts.
  static int GetHashCode(int key);

 private:
  VRELString text;
  mutable char* narrowText = nullptr;
  mutable wchar_t* wideText = nullptr;
  union Number {
    double asDouble;
    int asInt;
    bool asBool;
  } number{0.0};
  VRELValueType type = UnknownType;
};

// How a value is hashed and compared as a key, unless the container is told otherwise.
template <>
struct VRELHashTraits<VRELValue> {
  static unsigned int Hash(VRELValue const& key) { return static_cast<unsigned int>(key.GetHashCode()); }
  static bool Equal(VRELValue const& a, VRELValue const& b) { return a == b; }
};
