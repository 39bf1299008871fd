// Reads what was written to a memory stream.
#pragma once

#include <string>

#include "VRELStringOutputStream.h"

// Returns the contents of the stream. Appends a zero byte to it; call it at the end of a test.
inline std::string TakeText(VRELStringOutputStream& stream) {
  stream.writeChar('\0');
  return stream.contents();
}

// Returns what `write` writes to a stream.
template <class Write>
std::string TextOf(Write const& write) {
  VRELStringOutputStream stream;
  write(&stream);
  return TakeText(stream);
}
