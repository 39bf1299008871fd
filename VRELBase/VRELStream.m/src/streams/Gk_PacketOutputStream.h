// Writes in blocks.
#pragma once

#include "Gk_String.h"
#include "VRELExport.h"
#include "VRELFilterOutputStream.h"

// Gathers what is written and hands it to the stream beneath a packet at a time. A packet is a block of bytes and
// nothing else: what reaches the stream beneath is exactly what was written.
//
//   Gk_PacketOutputStream output(&file, 8192);
//   output.write(line, length);
//   output.flush();
//
// Every use ends with flush(). Neither close() nor the destructor writes what still waits, and writeChar goes straight
// to the stream beneath and overtakes what waits: that is promised.
class VREL_EXPORT Gk_PacketOutputStream : public VRELFilterOutputStream {
 public:
  // With a size below 1 nothing waits. Memory that runs out throws VRELAllocException.
  Gk_PacketOutputStream(VRELOutputStream* beneath, int size);
  // What waits is written by one stream: there are no copies.
  Gk_PacketOutputStream(Gk_PacketOutputStream const&) = delete;
  Gk_PacketOutputStream& operator=(Gk_PacketOutputStream const&) = delete;

  // A packet's length and more goes straight to the stream beneath, after what waits, and gives its result. Less is
  // kept, after what waits is written if there is too little room; the result then is `count` and tells nothing about
  // the stream beneath. Nothing is written and 0 returned for a count below 0, or for null with a count above 0.
  int write(char const* data, int count) override;
  // Keeps one byte and returns it.
  char write(char c) {
    if (fill >= buffer.len()) return writeBehindPacket(c);
    buffer[fill++] = c;
    return c;
  }
  // Writes what waits, and flushes the stream beneath.
  void flush() override;
  // Writes what waits; whatever comes of it, nothing waits then.
  void flushBuffer();

 private:
  char writeBehindPacket(char c);

  Gk_String buffer;  // as long as a packet
  int fill = 0;      // how many bytes wait
};
