// Read-only view of a narrow string with a movable start.
#pragma once

#include <cstdint>
#include <string_view>

#include "VRELDynamicArray.h"
#include "VRELExport.h"

// View of the bytes of a VRELDynamicArray<char> from an offset on. Use it to parse a path or a name from front to back
// without copying.
//
//   Gk_ROString path("bolts/m8");
//   int const taken = path.matchPathString("bolts");  // 6
//   path.offset(taken);                               // now reads "m8"
//
// A copy, and a view of an array, share the bytes with their source: a write through another owner is visible here.
//
// The offset is not limited to the bytes. A view that starts outside them has no text, and no operation reads outside
// them. The bytes need not end in a zero byte. "Text" below means the bytes from the start of the view up to the first
// zero byte, or up to the end of the bytes.
class VREL_EXPORT Gk_ROString {
 public:
  // Creates a view of no bytes.
  Gk_ROString() = default;
  // Copies the bytes of `s` with their terminator; null counts as the empty string.
  // Errors: throws VRELAllocException if they are more than INT_MAX.
  Gk_ROString(char const* s);
  // Copies exactly `n` bytes and adds no terminator. Empty for null or for `n` below 1.
  Gk_ROString(char const* s, int n);
  // Shares the bytes of the array.
  Gk_ROString(VRELDynamicArray<char> const& bytes) : array(bytes) {}

  // Moves the start by `n` bytes, backward if `n` is negative. The start may leave the bytes at either end; it stops at
  // INT_MIN and INT_MAX.
  void offset(int n);

  // Returns the number of bytes of the array, a terminator included, minus the offset. Negative if the view starts
  // after the end of the bytes, and more than the number of bytes if it starts before them.
  int len() const;

  // Returns the address of the start of the view, never null. Only the bytes of the array may be read through it, and
  // they end in a zero byte only if the array does; text() and operator[] are always safe.
  operator char const*() const { return bytes(); }

  // Returns the byte at an index from the start of the view, or 0 outside the bytes.
  char operator[](int index) const;

  // Returns the text, valid until the bytes change. Empty if the view starts outside the bytes.
  std::string_view text() const;

  // Returns the index of the first `c` from the start of the view, or -1. All bytes are searched, also those after a
  // zero byte: a zero byte finds the terminator.
  int find(char c) const;

  // Compatibility: returns len() if the text of `s` does not occur in this text; otherwise the address of the match
  // minus the address of the text of `s`, truncated to an int. The result is not an index into this view.
  int find(Gk_ROString const& s) const;

  // Searches backward from index len() - 1 - `from` for `c`. Returns -1 if there is none or if len() is below 2.
  // Compatibility: indexes count from the start of the array, not from the start of the view.
  int reverseFind(char c, int from) const;

  // Matches a segment against the start of this path. Returns how many bytes of the path the segment takes, a "/" after
  // the segment included, or -1 if the path does not begin with the segment.
  // Compatibility: a segment that begins with "/" takes only a leading "/" of the path, and returns 0, not -1, if the
  // path has none.
  int matchPathString(Gk_ROString const& segment) const;

  // Matches this text, a file name or path, against a pattern without regard to case.
  //
  //   ?       one byte, except "/" and a leading dot (the first byte of the name or after a "/")
  //   *       any bytes; "?" and "*" after it do not match "/", and each "*" after it matches a byte if one is left
  //   [a-z_]  one byte of the set, except a leading dot; "!" or "^" after "[" negates the set;
  //           a "/" before the matching element fails
  //   \       the next pattern byte, literally
  //
  // After a "*" the rest of the name counts as a name, so that a "[" directly after it matches no dot at all. The name
  // may continue with a "/" where the pattern ends.
  // Compatibility: unlike a shell pattern, "*" matches "/" and a leading dot, and a "*" at the end matches the whole
  // rest.
  //
  // Needs at most len() steps for each byte of the pattern, and no memory.
  bool matchPathPattern(Gk_ROString const& pattern) const;

 protected:
  char* bytes() const;
  // The bytes of the array from the start of the view on; all of them if the view starts before them.
  std::string_view visible() const;
  // The byte at an index from the start of the view; null outside the bytes.
  char* writable(int index) const;

 private:
  friend class Gk_String;

  VRELDynamicArray<char> array;
  std::int32_t start = 0;
};

// Compare the texts as strcmp does.
VREL_EXPORT bool operator<(Gk_ROString const& a, Gk_ROString const& b);
VREL_EXPORT bool operator==(Gk_ROString const& a, Gk_ROString const& b);
inline bool operator!=(Gk_ROString const& a, Gk_ROString const& b) {
  return !(a == b);
}

// Compare with a C string; null counts as the empty string.
VREL_EXPORT bool operator==(Gk_ROString const& a, char const* b);
inline bool operator==(char const* a, Gk_ROString const& b) {
  return b == a;
}
inline bool operator!=(Gk_ROString const& a, char const* b) {
  return !(a == b);
}
inline bool operator!=(char const* a, Gk_ROString const& b) {
  return !(b == a);
}
