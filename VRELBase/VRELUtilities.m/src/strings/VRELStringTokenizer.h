// Splits a text at a separator.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

// The pieces of a text between separators, all made by the constructor. Separators beside each other have an empty
// piece between them, and one at the start or the end has an empty piece before or behind it; the empty text has no
// piece at all.
class VREL_EXPORT VRELStringTokenizer {
 public:
  // Of the separator the low 16 bits count.
  VRELStringTokenizer(VRELString const& text, wchar_t separator);
  // Text in the process's default codepage.
  VRELStringTokenizer(char const* text, wchar_t separator);

  int GetTokenCount() const;
  // VREL_E_FAIL, with `out` as it was, for an index outside 0 to count - 1.
  VRINResult GetToken(int index, VRELString& out) const;
  // The piece itself, as long as this object lives; the index must be one of 0 to count - 1.
  VRELString const& Token(int index) const noexcept { return tokens[index]; }

 private:
  void Initialize(VRELString const& text, wchar_t separator);

  VRELDynamicArray<VRELString> tokens;
};
