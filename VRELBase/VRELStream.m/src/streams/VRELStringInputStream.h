// Input stream on a string in memory.
#pragma once

#include <cstddef>
#include <cstring>

#include "Gk_String.h"
#include "VRELExport.h"
#include "VRELInputStream.h"

// Reads the bytes of a Gk_String without its last element, which is the terminator.
//
//   VRELStringInputStream stream(Gk_String("ab"));  // three elements, two bytes to read
//
// The bytes are shared with the string, which must not be modified while the stream is in use.
//
// Errors: getCurrentOffset and setOffset raise "Gk_IOException".
class VREL_EXPORT VRELStringInputStream : public VRELInputStream {
 public:
  // Polls the abort flag. Asserts, without effect, if the string does not end in a zero byte; its last byte is never
  // read.
  explicit VRELStringInputStream(Gk_String const& string);

  // Polls the abort flag and returns null: not supported.
  VRELInputStream* duplicate() override;
  // Takes the byte directly, because scanners call this for every byte. In a derived class it goes through read.
  int readChar() override;
  // Returns 0 at the end of input, not -1, and for a count below 1.
  int read(char* buffer, int count) override;
  // Skips up to `count` bytes through read, and returns how many there were. Ends at the first read that returns less
  // than 1, since 0 is the end of input here.
  long skip(long count) override;
  // Reads exactly `count` bytes; if fewer are left, reads none and returns false. Not virtual, for readers of many
  // small values.
  // Requires: `count` is above 0.
  bool readWhole(char* buffer, int count) {
    if (count > remaining()) return false;
    std::memcpy(buffer, text.begin() + position, static_cast<std::size_t>(count));
    position += count;
    return true;
  }
  // Returns 1 if any byte is left, else 0.
  // Compatibility: not a count, unlike VRELFileInputStream::available.
  long available() const override;
  // Moves back by text.len(), at most to the beginning, and returns true.
  bool add(Gk_String const& pushed) override;

 private:
  // Returns the number of unread bytes before the terminator.
  long remaining() const { return text.len() - 1 - position; }

  Gk_String text;
  long position = 0;
};
