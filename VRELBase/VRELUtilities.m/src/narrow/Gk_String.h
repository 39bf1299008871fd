// The growable narrow string of the library's older layers.
#pragma once

#include <string_view>

#include "Gk_RWString.h"
#include "VRELDynamicArray.h"
#include "VRELExport.h"

// A growable string of bytes. A copy shares the bytes with its source, and each change to either shows in both;
// copy() gives a string of its own.
//
// A terminating zero byte is an element like any other: len() counts it where it is there, and operations that add
// text at the end take the last element for it. The default string has no element at all and no text.
//
//   Gk_String name("bolt");  // len() 5, dataLen() 4
//   name.append(".txt");     // "bolt.txt", len() 9
//
// Text that an operation takes may lie in the string itself. Memory that runs out throws VRELAllocException.
class VREL_EXPORT Gk_String {
 public:
  // Empty, without a terminator.
  Gk_String() = default;
  // The bytes of `s` with their terminator; null counts as the empty text.
  Gk_String(char const* s);
  // Exactly `n` bytes; nothing is added. Empty for null or an `n` below 1.
  Gk_String(char const* s, int n);
  // A copy of the view's bytes, with a zero byte behind them unless they end in one. Empty for an empty view.
  Gk_String(Gk_ROString const& view);

  // All elements, a terminator included.
  int len() const { return array.size(); }
  // The same without the last element, where that is a zero byte.
  int dataLen() const;

  // The first byte; null in an empty string.
  operator char*() const;
  // The index must lie below len(). The constant form gives 0 for any other index.
  char& operator[](int index) { return array[index]; }
  char operator[](int index) const;

  // All elements, a terminator included.
  char const* begin() const { return array.begin(); }
  char const* end() const { return array.end(); }

  // The bytes up to the first zero byte, or all of them; valid as long as nobody changes the string.
  std::string_view text() const;

  // Adds the byte as the last element: behind a terminator, and without one of its own. That is promised: strings are
  // built byte by byte and ended by append('\0').
  void append(char byte) { array.add(byte); }
  // Adds `n` bytes in the same way, which is faster than one by one. Nothing for null or an `n` below 1.
  void appendBytes(char const* bytes, int n);
  // Puts the text and its terminator in the place of the last element. Null changes nothing.
  void append(char const* s);
  // Puts all elements of `other` in the place of the last element. That an empty `other` still takes the last element
  // away is promised.
  void append(Gk_String const& other);
  // Puts the view's bytes in the place of the last element, with a zero byte behind them unless they end in one.
  void append(Gk_ROString const& view);
  // The same with `n` bytes at `s`.
  void append(int n, char const* s);

  // Keeps n + 1 bytes and a terminator behind them: one byte more than the name says is promised, so that a cut at the
  // index of a "." keeps the point. Nothing changes for an `n` at or above len(); one below 0 leaves the empty text.
  void chop(int n);

  // Brings len() to `n`: pads the text with blanks or cuts it, a terminator being the last element. 0 and less
  // empties the string. Nothing changes where len() is `n` already.
  void ensure(int n);

  // A string of its own with the bytes from `start` on, at most `count` of them, and one terminator.
  Gk_String subset(int start, int count) const;

  // Remove `n` elements, or as many as there are.
  void shrinkEnd(int n) { array.endShrink(n); }
  void shrinkFront(int n) { array.frontShrink(n); }

  void clear() { array.clear(); }

  // A string that shares nothing.
  Gk_String copy() const;

  // Whether another string or view has the same bytes.
  bool isShared() const { return array.isShared(); }

  // A view that shares the bytes, through which they can be written; of no bytes at all if the string is empty.
  Gk_RWString dataStr() const;
  Gk_RWString rwString() const { return dataStr(); }

 private:
  int offsetOf(char const* place) const;
  void replaceLast(char const* bytes, int count);
  void replaceFrom(int kept, char const* bytes, int count);
  void terminate();

  VRELDynamicArray<char> array;
};

// By the texts, as strcmp does.
VREL_EXPORT bool operator<(Gk_String const& a, Gk_String const& b);
// The same; but a string of no elements equals only another one, not the empty text.
VREL_EXPORT bool operator==(Gk_String const& a, Gk_String const& b);
inline bool operator!=(Gk_String const& a, Gk_String const& b) {
  return !(a == b);
}

// The same with plain text; only null equals a string of no elements.
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
