#include "Gk_PacketInputStream.h"

#include <algorithm>
#include <cstring>

Gk_PacketInputStream::Gk_PacketInputStream(VRELInputStream* underlying, int size)
    : VRELFilterInputStream(underlying), buffer("") {
  if (size > 0) {
    buffer.ensure(size);
  } else {
    buffer.clear();
  }
}

VRELInputStream* Gk_PacketInputStream::duplicate() {
  return nullptr;
}

int Gk_PacketInputStream::readNextPacket() {
  fetchPacket();
  return position < end ? takeByte() : -1;
}

int Gk_PacketInputStream::read(char* target, int count) {
  if (target == nullptr && count != 0) return -1;
  return static_cast<int>(take(target, count));
}

long Gk_PacketInputStream::skip(long count) {
  return take(nullptr, count);
}

// Consumes up to `count` bytes, and copies them to `target` unless it is null. Returns their number, or -1 for none.
long Gk_PacketInputStream::take(char* target, long count) {
  if (count < 0) return -1;
  long taken = -1;
  for (bool isFirst = true; isFirst || unread() > 0; isFirst = false) {
    if (unread() > 0) {
      long const before = std::max(taken, 0L);
      int const part = static_cast<int>(std::min<long>(unread(), count - before));
      if (target != nullptr && part > 0)
        std::memcpy(target + before, buffer.begin() + position, static_cast<std::size_t>(part));
      position += part;
      taken = before + part;
      if (taken == count) return taken;
    }
    fetchPacket();
  }
  return taken;
}

long Gk_PacketInputStream::available() const {
  return unread() + VRELFilterInputStream::available();
}

bool Gk_PacketInputStream::add(Gk_String const& text) {
  int const length = text.len();
  if (length <= position) {
    position -= length;
    return true;
  }
  giveBackUnread();
  VRELFilterInputStream::add(text);
  position = 0;
  end = 0;
  return true;
}

long Gk_PacketInputStream::getCurrentOffset() const {
  return VRELFilterInputStream::getCurrentOffset() - unread();
}

long Gk_PacketInputStream::setOffset(long offset) {
  giveBackUnread();
  position = 0;
  end = 0;
  return VRELFilterInputStream::setOffset(offset);
}

void Gk_PacketInputStream::giveBackUnread() {
  VRELFilterInputStream::add(Gk_String(buffer.begin() + position, unread()));
}

void Gk_PacketInputStream::fetchPacket() {
  int const size = buffer.len();
  end = size > 0 ? std::min(VRELFilterInputStream::read(buffer, size), size) : 0;
  position = 0;
}
