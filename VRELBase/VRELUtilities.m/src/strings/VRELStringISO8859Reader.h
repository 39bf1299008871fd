// Decodes one \S\c escape of ISO 10303-21.
#pragma once

#include <cstdint>

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

// Stands for one escape of four bytes and gives its character once. The fourth byte plus 128, modulo 256, is the code
// point: ISO 8859-1, whatever page was selected.
class VREL_EXPORT VRELStringISO8859Reader {
 public:
  // Copies four bytes, fewer if a zero ends the text before; null counts as empty.
  explicit VRELStringISO8859Reader(char const* text);
  virtual ~VRELStringISO8859Reader() = default;

  // Looks once whether the text is an escape.
  void DetermineEncoding();
  // Gives the character and VREL_S_OK at the first call, if the text is an escape that nobody has looked at before.
  // Otherwise VREL_E_FAIL with what was decoded so far; that a second call fails with the same text is promised.
  VRINResult GetResult(VRELString& out);

  // The character of the fourth byte of an escape.
  static constexpr char16_t Decode(char byte) noexcept {
    return static_cast<char16_t>((static_cast<unsigned char>(byte) + 128) % 256);
  }

 private:
  char encodedString[5];
  std::int32_t encoding = -1;  // -1 not looked at yet, 0 no escape, 1 the \S\ form
  VRELString result;
};
