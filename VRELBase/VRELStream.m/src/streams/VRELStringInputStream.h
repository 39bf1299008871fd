// Reads from memory.
#pragma once

#include <cstddef>
#include <cstring>

#include "Gk_String.h"
#include "VRELExport.h"
#include "VRELInputStream.h"

// Reads the bytes of a Gk_String in front of its last element, which is taken for the terminator: of "ab" two bytes can
// be read. The string's bytes are shared and must not change meanwhile.
//
// A position cannot be told or set: getCurrentOffset and setOffset raise "Gk_IOException".
class VREL_EXPORT VRELStringInputStream : public VRELInputStream {
 public:
  // Polls the abort flag. A string that does not end in a zero byte is asserted, to no effect, and its last byte is
  // never read.
  explicit VRELStringInputStream(Gk_String const& string);

  // Cannot be: polls the abort flag and returns null.
  VRELInputStream* duplicate() override;
  // Takes the byte itself, because scanners live on it; a derived class is asked for it by its read.
  int readChar() override;
  // At the end 0, not -1; 0 too for a count below 1.
  int read(char* buffer, int count) override;
  // Reads `count` bytes, 1 or more, if so many are left, and otherwise none and tells false. No virtual operation, for
  // readers of many small values.
  bool readWhole(char* buffer, int count) {
    if (count > remaining()) return false;
    std::memcpy(buffer, text.begin() + position, static_cast<std::size_t>(count));
    position += count;
    return true;
  }
  // 1 while there is anything to read, otherwise 0. That it is no count, as a file's is, is promised.
  long available() const override;
  // Moves back by text.len(), but not beyond the beginning. Always true.
  bool add(Gk_String const& pushed) override;

 private:
  // Bytes in front of the terminator that are still to be read.
  long remaining() const { return text.len() - 1 - position; }

  Gk_String text;
  long position = 0;
};
