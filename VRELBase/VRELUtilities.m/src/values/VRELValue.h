// Tagged value of options, properties and public values.
#pragma once

#include <string>
#include <string_view>

#include "VRELExport.h"
#include "VRELHashTraits.h"
#include "VRELString.h"
#include "VRINResult.h"

class VRELStreamFormatter;

// Value of kind double, int, bool or string, or without a kind. A value of any kind can be read as any other kind:
//
//   read as      double           int                       bool                      string
//   from double  itself           1 if not 0.0, else 0      true if not 0.0           as by "%f"
//   from int     the number       itself                    true if not 0             decimal
//   from bool    1.0 or 0.0       1 or 0                    itself                    "true" or "false"
//   from string  1.0 or 0.0 for   1 or 0 for a truth        a truth word; else        itself
//                a truth word;    word; else the integer    whether the integer at
//                else the number  at its beginning          its beginning is not 0
//                at its beginning
//
// Truth words are Yes, True and On, No, False and Off, in any case.
//
//   VRELValue value(L"12 mm");
//   int length = 0;
//   if (value.GetValue(length).IsSuccess()) ...  // 12
//
// Compatibility: a double reads as the integer 1 or 0 and is not truncated, since options of kind double serve as
// switches.
// Ownership: a value owns the C strings that its conversion operators return.
// Thread safety: none. The conversion operators of a const value write a cache.
class VREL_EXPORT VRELValue {
 public:
  enum VRELValueType : int { UnknownType, DoubleType, IntType, BoolType, StringType };
  // Names of the kinds, and a null entry.
  static char const* const VRELValueTypeNames[6];

  // Creates a value without a kind.
  VRELValue();
  VRELValue(bool value);
  VRELValue(int value);
  VRELValue(double value);
  VRELValue(VRELString const& value);
  // Creates a string from the default code page of the process, and caches its narrow form; null counts as empty.
  VRELValue(char const* value);
  // Create a string from wide characters, UTF-16 or UTF-8, as the constructors of VRELString do; null counts as empty.
  VRELValue(wchar_t const* value) : VRELValue(VRELString(value)) {}
  VRELValue(char16_t const* value) : VRELValue(VRELString(value)) {}
  VRELValue(std::string const& value) : VRELValue(VRELString(value)) {}
  VRELValue(std::string_view value) : VRELValue(VRELString(value)) {}
  VRELValue(std::wstring_view value) : VRELValue(VRELString(value)) {}
  // Deleted: other pointers would convert to bool.
  template <class T>
  VRELValue(T const volatile* value) = delete;
  VRELValue(VRELValue const& other);
  ~VRELValue();

  // Copies kind and value, but no cached C string. Self-assignment drops the caches and keeps the value.
  // Compatibility: the C strings that this value returned before are not released, so that pointers to them stay valid.
  VRELValue& operator=(VRELValue const& other);

  // Set value and kind, and return VREL_S_OK.
  // Compatibility: the cached C strings stay as they are.
  VRINResult SetValue(double value);
  VRINResult SetValue(bool value);
  VRINResult SetValue(int value);
  VRINResult SetValue(VRELString const& value);
  // Set a string, decoded as by the constructor of VRELString for the argument's type; null counts as empty.
  VRINResult SetValue(char const* value) { return SetValue(VRELString(value)); }
  VRINResult SetValue(wchar_t const* value) { return SetValue(VRELString(value)); }
  VRINResult SetValue(char16_t const* value) { return SetValue(VRELString(value)); }
  VRINResult SetValue(std::string const& value) { return SetValue(VRELString(value)); }
  VRINResult SetValue(std::string_view value) { return SetValue(VRELString(value)); }
  VRINResult SetValue(std::wstring_view value) { return SetValue(VRELString(value)); }
  // Deleted: other pointers would convert to bool.
  template <class T>
  VRINResult SetValue(T const volatile* value) = delete;

  // Returns the kind in `valueType`, and VREL_S_OK.
  VRINResult GetValueType(VRELValueType& valueType) const;
  // Returns whether there is a value.
  bool IsValid() const { return type != UnknownType; }
  // Returns whether the kind is int; values that only read as an integer do not count.
  bool IsInteger() const { return type == IntType; }

  // Read the value as the type of the argument, by the table above.
  // Errors: VREL_E_INVALID_ARGUMENT if there is no value; VREL_E_FAIL if a string is not a number. The argument is then
  // unchanged.
  VRINResult GetValue(double& value) const;
  VRINResult GetValue(bool& value) const;
  VRINResult GetValue(int& value) const;
  VRINResult GetValue(VRELString& value) const;

  // Return the value as a C string in the default code page of the process, or in wide characters; null if there is no
  // value.
  // Compatibility: the string of the first call is cached and returned again even after SetValue, since callers keep
  // the pointer.
  operator char const*() const;
  operator wchar_t const*() const;

  // Writes the value by its kind, a bool as the integer 1 or 0; nothing if there is no value.
  void Dump(VRELStreamFormatter& formatter) const;

  // Compares kind and value, strings by case and doubles exactly. Two values without a kind are not equal.
  bool operator==(VRELValue const& other) const;
  bool operator!=(VRELValue const& other) const { return !(*this == other); }

  // Returns the mix below of a number, truncated toward zero, or of a bool; the hash of a string; 0 if there is no
  // value.
  int GetHashCode() const;
  // Returns a 32-bit mix of the key by wrapping sums and arithmetic right shifts.
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

// Default hash and equality of value keys in VRELHashList and VRELHashMap.
template <>
struct VRELHashTraits<VRELValue> {
  static unsigned int Hash(VRELValue const& key) { return static_cast<unsigned int>(key.GetHashCode()); }
  static bool Equal(VRELValue const& a, VRELValue const& b) { return a == b; }
};
