// Reads what was written into memory.
#pragma once

#include <string>

#include "VRELStringOutputStream.h"

// All that the stream has gathered. Leaves a zero byte behind it: for the end of a test.
inline std::string TakeText(VRELStringOutputStream& stream) {
  stream.writeChar('\0');
  return stream.contents();
}

// What `write` writes on a stream.
template <class Write>
std::string TextOf(Write const& write) {
  VRELStringOutputStream stream;
  write(&stream);
  return TakeText(stream);
}
