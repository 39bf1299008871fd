// Texts that an object owns.
#pragma once

#include <cstddef>
#include <cstring>

// A copy of `text` made with array new, to be released with delete[]; null for a null or empty text.
inline char* VRELTextCopy(char const* text) {
  if (text == nullptr || *text == '\0') return nullptr;
  std::size_t const size = std::strlen(text) + 1;
  return static_cast<char*>(std::memcpy(new char[size], text, size));
}

// Puts a copy in the place of an owned text. A null or empty text leaves what is there.
inline void VRELTextReplace(char*& owned, char const* text) {
  char* const copy = VRELTextCopy(text);
  if (copy == nullptr) return;
  delete[] owned;
  owned = copy;
}
