// Writable view of a narrow string.
#pragma once

#include "Gk_ROString.h"
#include "VRELExport.h"

// Gk_ROString with write access. It owns no bytes: a write is visible in every string and view that shares the array.
//
//   Gk_String name("BOLT");
//   name.rwString().toLower();  // name reads "bolt"
class VREL_EXPORT Gk_RWString : public Gk_ROString {
 public:
  // Creates a view of no bytes.
  Gk_RWString() = default;
  // Shares the bytes of the array.
  Gk_RWString(VRELDynamicArray<char> const& bytes) : Gk_ROString(bytes) {}

  using Gk_ROString::operator[];
  // Returns the byte at an index from the start of the view. Outside the bytes it is a spare byte of the calling
  // thread, which reads 0.
  char& operator[](int index);
  // Returns the address of the start of the view. Only the bytes of the array may be accessed through it.
  operator char*() { return bytes(); }

  // Converts each byte from the start of the view to the end of the array to lower case in the C library's locale.
  void toLower();
};
