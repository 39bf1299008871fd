#include "VRELStringInputStream.h"

#include <algorithm>
#include <cstring>
#include <typeinfo>

#include "Gk_ErrMgr.h"

namespace {

// Assertions report this path and fixed lines, independent of the source tree.
constexpr char kFile[] = "VRELBase/VRELStream.m/src/VRELStringInputStream";

}  // namespace

VRELStringInputStream::VRELStringInputStream(Gk_String const& string) : text(string) {
  Gk_ErrMgr::checkAbort();
  int const length = string.len();
  if (length > 0 && string[length - 1] != '\0') Gk_ErrMgr::doAssert(kFile, 25);
}

VRELInputStream* VRELStringInputStream::duplicate() {
  Gk_ErrMgr::checkAbort();
  Gk_ErrMgr::doAssert(kFile, 32);
  return nullptr;
}

int VRELStringInputStream::readChar() {
  if (&typeid(*this) != &typeid(VRELStringInputStream)) return VRELInputStream::readChar();
  return remaining() > 0 ? static_cast<unsigned char>(text[static_cast<int>(position++)]) : -1;
}

int VRELStringInputStream::read(char* buffer, int count) {
  long const taken = std::min<long>(count, remaining());
  if (taken < 1 || buffer == nullptr) return 0;
  std::memcpy(buffer, static_cast<char const*>(text) + position, static_cast<std::size_t>(taken));
  position += taken;
  return static_cast<int>(taken);
}

long VRELStringInputStream::skip(long count) {
  char scratch[1024];
  long skipped = 0;
  while (skipped < count) {
    int const taken = read(scratch, static_cast<int>(std::min<long>(count - skipped, sizeof scratch)));
    if (taken < 1) break;
    skipped += taken;
  }
  return skipped;
}

long VRELStringInputStream::available() const {
  return remaining() > 0 ? 1 : 0;
}

bool VRELStringInputStream::add(Gk_String const& pushed) {
  position = std::max<long>(position - pushed.len(), 0);
  return true;
}
