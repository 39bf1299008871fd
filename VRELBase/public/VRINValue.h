// Public handle of a typed value.
#pragma once

#include <string>
#include <string_view>
#include <type_traits>

#include "VRELExport.h"
#include "VRINObject.h"

// Boolean, integer, double or string, or no value yet. Always valid. It can be read as any of these types, by the
// conversions of VRELValue; a value that cannot be converted reads as false, 0 or 0.0.
//
//   VRINValue const tolerance(0.01);
//   VRINValue shared(true);
//   shared = tolerance;                     // both handles share one value
//   double const width = shared;            // 0.01
//   char const* const text = VRINValue(3);  // "3"
//
// Compatibility: a double converts to the integer 1 or 0.
class VREL_EXPORT VRINValue : public VRINObject {
 public:
  enum ValueType : int { BoolType, IntType, DoubleType, StringType };

  // Creates a handle without a value.
  VRINValue();
  VRINValue(bool value);
  VRINValue(int value);
  VRINValue(double value);
  // Creates a string value from bytes in the default codepage of the process, or from wide characters. Null is treated
  // as the empty string.
  VRINValue(char const* value);
  VRINValue(wchar_t const* value);
  // Creates a string value from UTF-8, wide characters or UTF-16. The string ends at the first zero character.
  VRINValue(std::string const& value);
  VRINValue(std::string_view value);
  VRINValue(std::wstring const& value);
  VRINValue(std::wstring_view value);
  VRINValue(std::u16string_view value);
  VRINValue(char16_t const* value);
  // Rejects all other pointers, which would convert to true.
  template <class Pointer,
            class = std::enable_if_t<std::is_pointer_v<Pointer> && !std::is_convertible_v<Pointer, char const*> &&
                                     !std::is_convertible_v<Pointer, wchar_t const*> &&
                                     !std::is_convertible_v<Pointer, char16_t const*>>>
  VRINValue(Pointer) = delete;
  VRINValue(VRINValue const& other) = default;

  // Shares the value of `other`.
  VRINValue& operator=(VRINValue const& other);

  // Returns the type of the value, or BoolType if there is no value.
  //
  // Compatibility: the only read that does not call IsValid().
  ValueType GetType() const;

  operator bool() const;
  operator int() const;
  operator double() const;
  // Return the value as a string in the default codepage of the process, or in wide characters; null if there is no
  // value.
  // Ownership: the value; the pointer is valid until the last handle is destroyed.
  operator char const*() const;
  operator wchar_t const*() const;
};
