#include "WatchedStream.h"

int WatchedStream::write(char const* buffer, int count) {
  if (failed) return -1;
  int const taken = target->write(buffer, count);
  failed = taken != count;
  return taken;
}

void WatchedStream::flush() {
  target->flush();
}

void WatchedStream::close() {
  target->close();
}

void WatchedStream::Check() const {
  if (failed) throw Failure();
}
