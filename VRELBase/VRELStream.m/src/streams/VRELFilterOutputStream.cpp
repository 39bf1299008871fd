#include "VRELFilterOutputStream.h"

int VRELFilterOutputStream::writeChar(char c) {
  return target->writeChar(c);
}

int VRELFilterOutputStream::write(char const* buffer, int count) {
  return target->write(buffer, count);
}

void VRELFilterOutputStream::flush() {
  target->flush();
}

void VRELFilterOutputStream::close() {
  target->close();
}
