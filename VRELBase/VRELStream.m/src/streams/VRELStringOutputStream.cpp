#include "VRELStringOutputStream.h"

int VRELStringOutputStream::write(char const* buffer, int count) {
  if (buffer == nullptr || count < 1) return 0;
  if (count == 1) {
    text.append(*buffer);
  } else {
    text.appendBytes(buffer, count);
  }
  return count;
}

void VRELStringOutputStream::flush() {}

void VRELStringOutputStream::close() {}
