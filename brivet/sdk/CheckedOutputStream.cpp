#include "CheckedOutputStream.h"

int CheckedOutputStream::write(char const* buffer, int count) {
  if (failed) return -1;
  int const taken = target->write(buffer, count);
  failed = taken != count;
  return taken;
}

void CheckedOutputStream::flush() {
  target->flush();
}

void CheckedOutputStream::close() {
  target->close();
}

void CheckedOutputStream::Check() const {
  if (failed) throw Failure();
}
