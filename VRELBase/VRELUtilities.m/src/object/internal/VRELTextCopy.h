// C strings that an object owns.
#pragma once

#include <cstddef>
#include <cstring>

// Returns a copy of `text`, to be released with delete[]; null for a null or empty string.
inline char* VRELTextCopy(char const* text) {
  if (text == nullptr || *text == '\0') return nullptr;
  std::size_t const size = std::strlen(text) + 1;
  return static_cast<char*>(std::memcpy(new char[size], text, size));
}

// Replaces an owned string by a copy of `text`. Does nothing for a null or empty string.
inline void VRELTextReplace(char*& owned, char const* text) {
  char* const copy = VRELTextCopy(text);
  if (copy == nullptr) return;
  delete[] owned;
  owned = copy;
}
