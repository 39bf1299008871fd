#include "Gk_IndexedInputStream.h"

#include <algorithm>
#include <memory>

namespace {

unsigned LineFeedCount(char const* begin, char const* end) {
  return static_cast<unsigned>(std::count(begin, end, '\n'));
}

}  // namespace

VRELInputStream* Gk_IndexedInputStream::duplicate() {
  auto copy = std::make_unique<Gk_IndexedInputStream>(*this);
  if (source != nullptr) copy->source = source->duplicate();
  return copy.release();
}

int Gk_IndexedInputStream::readChar() {
  if (source == nullptr) return -1;
  int const c = VRELFilterInputStream::readChar();
  if (c == '\n') countLines(1);
  return c;
}

int Gk_IndexedInputStream::read(char* target, int count) {
  if (source == nullptr) return -1;
  int const taken = VRELFilterInputStream::read(target, count);
  // A stream that reports more bytes than were asked for has not written them.
  int const held = std::min(taken, count);
  if (target != nullptr && held > 0) countLines(LineFeedCount(target, target + held));
  return taken;
}

bool Gk_IndexedInputStream::add(Gk_String const& text) {
  countLines(0U - LineFeedCount(text.begin(), text.end()));
  if (source != nullptr) VRELFilterInputStream::add(text);
  return true;
}
