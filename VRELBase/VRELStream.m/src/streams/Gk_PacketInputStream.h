// Reads ahead in blocks.
#pragma once

#include "Gk_String.h"
#include "VRELExport.h"
#include "VRELFilterInputStream.h"

// Takes the bytes of the stream beneath in packets, one read for each, and gives them out singly or in any number. A
// packet is a block of bytes and nothing else: what is read is exactly what the stream beneath holds.
//
//   VRELFileInputStream file(path);
//   Gk_PacketInputStream input(&file, 8192);
//   for (int c = input.readChar(); c >= 0; c = input.readChar()) ...
//
// The stream beneath runs ahead by what the packet still holds; setOffset, and an add that the packet cannot serve,
// bring it back. Both raise "Gk_IOException" over a stream that cannot, as getCurrentOffset and available do.
class VREL_EXPORT Gk_PacketInputStream : public VRELFilterInputStream {
 public:
  // Reads nothing yet. A size below 1 makes a stream that is always at its end; memory that runs out throws
  // VRELAllocException.
  Gk_PacketInputStream(VRELInputStream* beneath, int size);
  // The packet is no stream of its own: there are no copies.
  Gk_PacketInputStream(Gk_PacketInputStream const&) = delete;
  Gk_PacketInputStream& operator=(Gk_PacketInputStream const&) = delete;

  // Cannot be: null.
  VRELInputStream* duplicate() override;
  int readChar() override { return position < end ? takeByte() : readNextPacket(); }
  // As many bytes as there are, up to `count`, over any number of packets; -1 where none came. That a request for 0
  // bytes fetches a packet when none is there, and gives -1 at the end, is promised. -1 too for a count below 0.
  int read(char* target, int count) override;
  // As read, without the bytes.
  long skip(long count) override;
  // What the packet holds and what is left beneath.
  long available() const override;
  // Moves back in the packet, whose bytes are taken for the text; a text longer than what was read of the packet goes
  // to the stream beneath, behind the unread bytes. Always true.
  bool add(Gk_String const& text) override;
  // The place of the next byte, not that of the stream beneath.
  long getCurrentOffset() const override;
  // Gives the unread bytes back and moves the stream beneath.
  long setOffset(long offset) override;

  // Reads the next packet and drops what is left of this one. A failed read leaves an empty packet.
  virtual void fetchPacket();

 private:
  int takeByte() { return static_cast<unsigned char>(buffer.begin()[position++]); }
  int readNextPacket();
  int unread() const { return end > position ? end - position : 0; }
  long take(char* target, long count);
  void giveBackUnread();

  Gk_String buffer;  // as long as a packet
  int position = 0;
  int end = 0;  // what the last fetch gave; -1 when it failed
};
