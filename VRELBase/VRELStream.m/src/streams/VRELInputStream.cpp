#include "VRELInputStream.h"

#include <algorithm>

#include "Gk_ErrMgr.h"

namespace {

[[noreturn]] void RaiseCannot() {
  Gk_ErrMgr::raise(Gk_Exception("Gk_IOException"));
}

}  // namespace

VRELInputStream::~VRELInputStream() {
  source = nullptr;
}

int VRELInputStream::readChar() {
  char byte = 0;
  return read(&byte, 1) > 0 ? static_cast<unsigned char>(byte) : -1;
}

long VRELInputStream::skip(long count) {
  // Lives as long as the process and is shared by all streams, also on several threads: nobody reads it.
  static long const maxSkipBufferSize = 8192;
  static char* const scratch = new char[maxSkipBufferSize];

  // An empty read is no end, that is promised: a stream that has nothing yet is asked again. One that has nothing so
  // often in a row will never have anything, and must not hang its caller.
  int const maxEmptyReads = 100;

  long remaining = count;
  int emptyReads = 0;
  while (remaining > 0 && emptyReads < maxEmptyReads) {
    int const taken = read(scratch, static_cast<int>(std::min(remaining, maxSkipBufferSize)));
    if (taken < 0) break;
    remaining -= taken;
    emptyReads = taken == 0 ? emptyReads + 1 : 0;
  }
  return count > 0 ? count - remaining : 0;
}

long VRELInputStream::available() const {
  RaiseCannot();
}

bool VRELInputStream::add(Gk_String const& /*text*/) {
  RaiseCannot();
}

long VRELInputStream::getCurrentOffset() const {
  RaiseCannot();
}

long VRELInputStream::setOffset(long /*offset*/) {
  RaiseCannot();
}
