// Splitter of strings at a separator.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

// Splits a string at a separator. Consecutive separators have an empty token between them, and a separator at the start
// or the end has an empty token before or after it; the empty string has no token.
//
//   VRELStringTokenizer const tokens(VRELString(L"a,,b"), L',');
//   for (int i = 0; i < tokens.GetTokenCount(); ++i) std::cout << tokens.Token(i) << "\n";  // "a", "", "b"
//
// Performance: the constructor creates all tokens, in linear time.
class VREL_EXPORT VRELStringTokenizer {
 public:
  // Splits the string.
  // Compatibility: only the low 16 bits of the separator are used.
  VRELStringTokenizer(VRELString const& text, wchar_t separator);
  // Splits bytes of the default code page of the process.
  VRELStringTokenizer(char const* text, wchar_t separator);

  // Returns the number of tokens.
  int GetTokenCount() const;
  // Copies a token to `out`.
  // Errors: VREL_E_FAIL for an index outside 0 to GetTokenCount() - 1; `out` is then unchanged.
  VRINResult GetToken(int index, VRELString& out) const;
  // Returns a token, valid as long as the tokenizer.
  // Requires: an index of 0 to GetTokenCount() - 1.
  VRELString const& Token(int index) const noexcept { return tokens[index]; }

 private:
  void Initialize(VRELString const& text, wchar_t separator);

  VRELDynamicArray<VRELString> tokens;
};
