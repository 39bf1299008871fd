// Growable narrow string of the older layers.
#pragma once

#include <string_view>

#include "Gk_RWString.h"
#include "VRELDynamicArray.h"
#include "VRELExport.h"

// Growable byte string without an encoding. Use it where an operation of the older layers asks for it; otherwise use
// VRELString.
//
//   Gk_String name("bolt");  // len() 5, dataLen() 4
//   name.append(".txt");     // "bolt.txt", len() 9
//
// A terminating zero byte is an element like any other: len() counts it, and operations that append text overwrite the
// last element, which they take for the terminator. The default string has no element and no text.
//
// Ownership: a copy shares the bytes with its source, and a change to either is visible in both; copy() returns an
// independent string. Text that an operation takes may be part of the string itself.
// Errors: throws VRELAllocException if memory runs out or a string would exceed INT_MAX elements.
class VREL_EXPORT Gk_String {
 public:
  // Creates a string without elements.
  Gk_String() = default;
  // Copies the bytes of `s` with their terminator; null counts as the empty string.
  Gk_String(char const* s);
  // Copies exactly `n` bytes and adds no terminator. Empty for null or for `n` below 1.
  Gk_String(char const* s, int n);
  // Copies the bytes of the view, and adds a zero byte unless they end in one. Empty for a view of no bytes.
  Gk_String(Gk_ROString const& view);

  // Returns the number of elements, a terminator included.
  int len() const { return array.size(); }
  // Returns the number of elements without a terminator at the end.
  int dataLen() const;

  // Returns the address of the first byte; null if there are no elements.
  operator char*() const;
  // Returns the byte at an index. The const form returns 0 for an index outside 0 to len() - 1.
  // Requires: for the non-const form, an index of 0 to len() - 1.
  char& operator[](int index) { return array[index]; }
  char operator[](int index) const;

  // Iterate over all elements, a terminator included.
  char const* begin() const { return array.begin(); }
  char const* end() const { return array.end(); }

  // Returns the bytes up to the first zero byte, or all of them; valid until the string changes.
  std::string_view text() const;

  // Adds a byte as the last element.
  // Compatibility: it is added after a terminator, and no terminator follows. To build a string byte by byte, begin
  // with Gk_String() and end with append('\0').
  void append(char byte) { array.add(byte); }
  // Adds `n` bytes as append(char) does, but faster. Does nothing for null or for `n` below 1.
  void appendBytes(char const* bytes, int n);
  // Replaces the last element by the text and its terminator. Does nothing for null.
  void append(char const* s);
  // Replaces the last element by all elements of `other`.
  // Compatibility: an empty `other` still removes the last element.
  void append(Gk_String const& other);
  // Replaces the last element by the bytes of the view, and adds a zero byte unless they end in one.
  void append(Gk_ROString const& view);
  // Does the same with `n` bytes at `s`.
  void append(int n, char const* s);

  // Keeps n + 1 bytes and adds a terminator. Does nothing for `n` at or above len(). For `n` below 0 the empty string
  // with its terminator remains.
  // Compatibility: one byte more than `n` is kept, so that a cut at the index of a "." keeps the point.
  void chop(int n);

  // For `n` above len(): removes the last element, adds n - len() blanks, len() as it was before, and a zero byte. The
  // string then has `n` elements, or n + 1 if it had none. For any other `n`: chop(n).
  void ensure(int n);

  // Returns an independent string of at most `count` bytes from `start` on, and one terminator.
  Gk_String subset(int start, int count) const;

  // Remove `n` elements, or as many as there are.
  void shrinkEnd(int n) { array.endShrink(n); }
  void shrinkFront(int n) { array.frontShrink(n); }

  // Removes all elements.
  void clear() { array.clear(); }

  // Returns an independent copy.
  Gk_String copy() const;

  // Returns whether another string or view shares the bytes.
  bool isShared() const { return array.isShared(); }

  // Return a writable view that shares the bytes; a view of no bytes if the string has no elements.
  Gk_RWString dataStr() const;
  Gk_RWString rwString() const { return dataStr(); }

 private:
  int offsetOf(char const* place) const;
  void replaceLast(char const* bytes, int count);
  void replaceFrom(int kept, char const* bytes, int count);
  void terminate();

  VRELDynamicArray<char> array;
};

// Compares the texts as strcmp does.
VREL_EXPORT bool operator<(Gk_String const& a, Gk_String const& b);
// Compares the texts, except that a string without elements equals only another string without elements.
VREL_EXPORT bool operator==(Gk_String const& a, Gk_String const& b);
inline bool operator!=(Gk_String const& a, Gk_String const& b) {
  return !(a == b);
}

// Compares with a C string; only null equals a string without elements.
VREL_EXPORT bool operator==(Gk_String const& a, char const* b);
inline bool operator==(char const* a, Gk_String const& b) {
  return b == a;
}
inline bool operator!=(Gk_String const& a, char const* b) {
  return !(a == b);
}
inline bool operator!=(char const* a, Gk_String const& b) {
  return !(b == a);
}
