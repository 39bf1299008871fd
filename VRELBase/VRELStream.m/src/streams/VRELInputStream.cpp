#include "VRELInputStream.h"

#include <algorithm>

#include "Gk_ErrMgr.h"

namespace {

[[noreturn]] void RaiseNotSupported() {
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
  // Shared by all streams and threads, and never freed. Safe because nothing reads its content.
  static long const maxSkipBufferSize = 8192;
  static char* const scratch = new char[maxSkipBufferSize];

  long remaining = count;
  while (remaining > 0) {
    int const taken = read(scratch, static_cast<int>(std::min(remaining, maxSkipBufferSize)));
    if (taken < 0) break;
    remaining -= taken;
  }
  return count > 0 ? count - remaining : 0;
}

long VRELInputStream::available() const {
  RaiseNotSupported();
}

bool VRELInputStream::add(Gk_String const& /*text*/) {
  RaiseNotSupported();
}

long VRELInputStream::getCurrentOffset() const {
  RaiseNotSupported();
}

long VRELInputStream::setOffset(long /*offset*/) {
  RaiseNotSupported();
}
