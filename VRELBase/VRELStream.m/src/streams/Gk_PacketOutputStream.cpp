#include "Gk_PacketOutputStream.h"

#include <cstring>

Gk_PacketOutputStream::Gk_PacketOutputStream(VRELOutputStream* underlying, int size)
    : VRELFilterOutputStream(underlying), buffer("") {
  if (size > 0) {
    buffer.ensure(size);
  } else {
    buffer.clear();
  }
}

int Gk_PacketOutputStream::write(char const* data, int count) {
  if (count < 0 || (data == nullptr && count > 0)) return 0;
  if (count >= buffer.len()) {
    flushBuffer();
    return VRELFilterOutputStream::write(data, count);
  }
  if (buffer.len() - fill < count) flushBuffer();
  if (count > 0) std::memcpy(&buffer[fill], data, static_cast<std::size_t>(count));
  fill += count;
  return count;
}

char Gk_PacketOutputStream::writeBehindPacket(char c) {
  flushBuffer();
  if (buffer.len() == 0) {
    VRELFilterOutputStream::write(&c, 1);
  } else {
    buffer[fill++] = c;
  }
  return c;
}

void Gk_PacketOutputStream::flush() {
  flushBuffer();
  VRELFilterOutputStream::flush();
}

void Gk_PacketOutputStream::flushBuffer() {
  VRELFilterOutputStream::write(buffer, fill);
  fill = 0;
}
