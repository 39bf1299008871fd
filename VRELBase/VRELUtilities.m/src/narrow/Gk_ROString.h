// A read-only view of narrow text, with a start that moves forward.
#pragma once

#include <cstdint>
#include <string_view>

#include "VRELDynamicArray.h"
#include "VRELExport.h"

// A view of the bytes of a VRELDynamicArray<char>, from an offset on. A copy, and a view of an array, share the bytes
// with their source: a write through another sharer shows here.
//
// The bytes need not end in a zero byte. What is called the text below is the bytes up to the first zero byte, or all
// of them; nothing behind the view is ever read.
//
//   Gk_ROString path("bolts/m8");
//   int const taken = path.matchPathString("bolts");  // 6
//   path.offset(taken);                               // now reads "m8"
class VREL_EXPORT Gk_ROString {
 public:
  // The empty view.
  Gk_ROString() = default;
  // A copy of the bytes of `s` with their terminator; null counts as the empty text.
  Gk_ROString(char const* s);
  // A copy of exactly `n` bytes; nothing is added. Empty for null or an `n` below 1.
  Gk_ROString(char const* s, int n);
  Gk_ROString(VRELDynamicArray<char> const& bytes) : array(bytes) {}

  // Moves the start forward by `n` bytes; back, where `n` is negative. It stops at either end of the bytes.
  void offset(int n);

  // The bytes from the start of the view to the end of the array; a terminator counts.
  int len() const;

  // The first visible byte. Never null; what it points to ends in a zero byte only if the bytes do.
  operator char const*() const { return bytes(); }

  // The byte at an index from the visible start; 0 outside the array.
  char operator[](int index) const;

  // The text, valid as long as nobody changes the bytes.
  std::string_view text() const;

  // The index of the first `c` from the visible start, -1 where there is none. All len() bytes are searched: a zero
  // byte finds the terminator.
  int find(char c) const;

  // len() if the text of `s` does not occur in this text. If it does: the place of the match less the address of the
  // text of `s`, in bytes, cut to an int. That this is no index into this view is promised.
  int find(Gk_ROString const& s) const;

  // Looks down from index len() - 1 - `from` for `c`; -1 where there is none, and in a view of less than 2 bytes. That
  // the index counts from the start of the array, and not from the visible start, is promised.
  int reverseFind(char c, int from) const;

  // Reads this text as a path: how many of its bytes the segment takes, a "/" behind the segment included, or -1 if
  // the path does not begin with the segment. A segment that begins with "/" takes just a leading "/" of the path, and
  // is promised to give 0, not -1, where the path has none.
  int matchPathString(Gk_ROString const& segment) const;

  // Whether this text, a file name or path, matches a pattern, without regard to case.
  //
  //   ?       one byte, but no "/" and no leading dot (one that begins the name or follows a "/")
  //   *       any bytes; "?" and "*" that follow it take no "/", and each "*" that follows takes a byte if one is left
  //   [a-z_]  one byte of the set, but no leading dot; "!" or "^" in front negates it; a "/" before the
  //           element that matches fails
  //   \       takes the next pattern byte literally
  //
  // Behind a "*" the rest of the name counts as a name, so that a "[" right behind it takes no dot at all. The name may
  // go on with a "/" where the pattern ends. That a "*" takes "/" and a leading dot, and that one which
  // ends the pattern takes all the rest, is promised: names are matched with their directories in front.
  //
  // Takes at most len() steps for each byte of the pattern, and no memory.
  bool matchPathPattern(Gk_ROString const& pattern) const;

 protected:
  char* bytes() const;

 private:
  friend class Gk_String;

  VRELDynamicArray<char> array;
  std::int32_t start = 0;
};

// By the texts, as strcmp does.
VREL_EXPORT bool operator<(Gk_ROString const& a, Gk_ROString const& b);
VREL_EXPORT bool operator==(Gk_ROString const& a, Gk_ROString const& b);
inline bool operator!=(Gk_ROString const& a, Gk_ROString const& b) {
  return !(a == b);
}

// The same with plain text; null counts as the empty text.
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
