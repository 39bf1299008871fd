// Decoder of one \S\c escape of ISO 10303-21.
#pragma once

#include <cstdint>
#include <memory>

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

// Decodes one escape of four bytes, once. The code point is the fourth byte plus 128, modulo 256, which is a character
// of ISO 8859-1; page selectors have no effect. VRELStringISO1030321Reader decodes whole strings.
class VREL_EXPORT VRELStringISO8859Reader {
 public:
  // Copies the first four bytes, up to a zero byte; null counts as empty.
  explicit VRELStringISO8859Reader(char const* text);
  virtual ~VRELStringISO8859Reader() = default;

  // Determines whether the string is an escape; only the first call has an effect.
  void DetermineEncoding();
  // Decodes the escape and returns VREL_S_OK.
  // Errors: VREL_E_FAIL if the string is not an escape; `out` is then empty.
  // Compatibility: a second call, and a call after DetermineEncoding, returns VREL_E_FAIL with what was decoded before.
  VRINResult GetResult(VRELString& out);

  // Returns the character for the fourth byte of an escape.
  static constexpr char16_t Decode(char byte) noexcept {
    return static_cast<char16_t>((static_cast<unsigned char>(byte) + 128) % 256);
  }

 private:
  std::unique_ptr<char[]> encodedString;  // always five bytes
  std::int32_t encoding = -1;             // -1 not determined, 0 not an escape, 1 the \S\ form
  VRELString result;
};
