// Decoder of one \X2\...\X0\ escape of ISO 10303-21.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

// Decodes one escape, once: "\X2\", one or more quadruplets of hexadecimal digits, "\X0\". Each quadruplet is one
// UTF-16 code unit, and two quadruplets form a character above U+FFFF. The value 0 is skipped.
// VRELStringISO1030321Reader decodes whole strings.
class VREL_EXPORT VRELStringISO10646Reader {
 public:
  // Copies the escape; null is allowed.
  explicit VRELStringISO10646Reader(char const* text);
  virtual ~VRELStringISO10646Reader() = default;

  // Determines whether the string is an escape; only the first call has an effect.
  void DetermineEncoding();
  // Decodes the escape and returns VREL_S_OK.
  // Errors: VREL_E_FAIL if the string is not an escape; `out` is then empty.
  // Compatibility: a second call, and a call after DetermineEncoding, returns VREL_E_FAIL with what was decoded before.
  VRINResult GetResult(VRELString& out);

  // Returns (length - 8) / 4 for any string, also a negative number; 0 for null.
  int GetNumberOfQuadruplets() const;
  // Copies a quadruplet and a zero byte to `out`. Does nothing for an index out of range or a null `out`.
  // Requires: `out` has five bytes.
  void GetQuadrupletAt(int index, char* out) const;

  // Returns the number at the beginning of the string, as "%x" of sscanf reads it, modulo 65536; 0 if there is none.
  static unsigned short GetUChar(char const* text);
  static constexpr bool IsLeadSurrogate(unsigned short unit) noexcept { return unit >= 0xD800 && unit <= 0xDBFF; }
  static constexpr bool IsTrailSurrogate(unsigned short unit) noexcept { return unit >= 0xDC00 && unit <= 0xDFFF; }

  // Returns whether the bytes are one complete escape with at least one quadruplet.
  static bool IsSequence(std::string_view bytes) noexcept;
  // Writes the units of a complete escape, at most one for each quadruplet, and returns the end of the units.
  static char16_t* Decode(std::string_view sequence, char16_t* units) noexcept;

 private:
  std::string_view Encoded() const noexcept { return {encodedString.get(), size}; }

  std::unique_ptr<char[]> encodedString;  // null for a null argument
  std::int32_t encoding = -1;             // -1 not determined, 0 not an escape, 2 the \X2\ form
  VRELString result;
  std::size_t size = 0;
};
