// A view of narrow text that may be written.
#pragma once

#include "Gk_ROString.h"
#include "VRELExport.h"

// A Gk_ROString with writing access. It owns no text of its own: what is written shows in every string and view that
// shares the array.
class VREL_EXPORT Gk_RWString : public Gk_ROString {
 public:
  // The empty view.
  Gk_RWString() = default;
  Gk_RWString(VRELDynamicArray<char> const& bytes) : Gk_ROString(bytes) {}

  using Gk_ROString::operator[];
  // The index, from the visible start, must lie in the array.
  char& operator[](int index) { return bytes()[index]; }
  // The first visible byte.
  operator char*() { return bytes(); }

  // Lowers each of the len() bytes, as the C library's locale has it.
  void toLower();
};
