// Decodes one \X2\...\X0\ escape of ISO 10303-21.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

// Stands for one escape and gives its text once: "\X2\", one or more quadruplets of hexadecimal digits, "\X0\". Each
// quadruplet is one UTF-16 unit, so that two of them make a character above U+FFFF. The value 0 adds nothing.
class VREL_EXPORT VRELStringISO10646Reader {
 public:
  // Copies the text; null is allowed.
  explicit VRELStringISO10646Reader(char const* text);
  virtual ~VRELStringISO10646Reader() = default;

  // Looks once whether the text is an escape.
  void DetermineEncoding();
  // Gives the text and VREL_S_OK at the first call, if the text is an escape that nobody has looked at before.
  // Otherwise VREL_E_FAIL with what was decoded so far; that a second call fails with the same text is promised.
  VRINResult GetResult(VRELString& out);

  // (length - 8) / 4, whatever the text is, so that it is below 0 for a short one; 0 for null.
  int GetNumberOfQuadruplets() const;
  // Copies a quadruplet and a zero to `out`, five bytes in all. An index out of range leaves `out` alone.
  void GetQuadrupletAt(int index, char* out) const;

  // The number that the text starts with, as "%x" of sscanf reads it, modulo 65536; 0 if there is none.
  static unsigned short GetUChar(char const* text);
  static constexpr bool IsLeadSurrogate(unsigned short unit) noexcept { return unit >= 0xD800 && unit <= 0xDBFF; }
  static constexpr bool IsTrailSurrogate(unsigned short unit) noexcept { return unit >= 0xDC00 && unit <= 0xDFFF; }

  // Whether the bytes are one whole escape with at least one quadruplet.
  static bool IsSequence(std::string_view bytes) noexcept;
  // Writes the units of such an escape, at most one for each quadruplet, and gives the place behind them.
  static char16_t* Decode(std::string_view sequence, char16_t* units) noexcept;

 private:
  std::optional<std::string> encodedString;
  std::int32_t encoding = -1;  // -1 not looked at yet, 0 no escape, 2 the \X2\ form
  VRELString result;
};
