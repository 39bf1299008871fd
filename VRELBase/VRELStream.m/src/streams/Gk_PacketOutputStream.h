// Output filter that writes in blocks.
#pragma once

#include "Gk_String.h"
#include "VRELExport.h"
#include "VRELFilterOutputStream.h"

// Collects writes in a block of a fixed size (a "packet"), and writes it to the underlying stream when it is full. A
// packet has no header and no trailer: the underlying stream receives exactly the bytes that were written.
//
//   Gk_PacketOutputStream output(&file, 8192);
//   output.write(line, length);
//   output.flush();
//
// Compatibility: close() and the destructor do not write pending bytes, so end every use with flush(). writeChar writes
// to the underlying stream directly, before the pending bytes.
class VREL_EXPORT Gk_PacketOutputStream : public VRELFilterOutputStream {
 public:
  // Allocates a packet of `size` bytes. A stream with a size below 1 does not buffer.
  // Errors: throws VRELAllocException.
  Gk_PacketOutputStream(VRELOutputStream* underlying, int size);
  Gk_PacketOutputStream(Gk_PacketOutputStream const&) = delete;
  Gk_PacketOutputStream& operator=(Gk_PacketOutputStream const&) = delete;

  // Writes `count` bytes. If they fill a packet, they go to the underlying stream directly, after the pending bytes,
  // and the result is that of the underlying stream. Otherwise they are buffered, after a flush if they do not fit, and
  // the result is `count`, also if the flush failed.
  // Writes nothing and returns 0 for a negative count, and for null with a count above 0.
  int write(char const* data, int count) override;
  // Buffers one byte and returns it.
  char write(char c) {
    if (fill >= buffer.len()) return writeBehindPacket(c);
    buffer[fill++] = c;
    return c;
  }
  // Writes the pending bytes, and flushes the underlying stream.
  void flush() override;
  // Writes the pending bytes with one write, also if there are none. Afterwards nothing is pending, even if the write
  // failed.
  void flushBuffer();

 private:
  char writeBehindPacket(char c);

  Gk_String buffer;  // its length is the packet size
  int fill = 0;      // number of pending bytes
};
