// Input filter that reads in blocks.
#pragma once

#include "Gk_String.h"
#include "VRELExport.h"
#include "VRELFilterInputStream.h"

// Reads the underlying stream in blocks of a fixed size ("packets"), and serves reads of any size from the block. A
// packet has no header and no trailer: the bytes are exactly those of the underlying stream.
//
//   VRELFileInputStream file(path);
//   Gk_PacketInputStream input(&file, 8192);
//   for (int c = input.readChar(); c >= 0; c = input.readChar()) ...
//
// The underlying stream is ahead by the unread bytes of the packet; setOffset, and an add that does not fit into the
// packet, push them back.
//
// Errors: "Gk_IOException" from getCurrentOffset, setOffset, available and add, if the underlying stream does not
// support the operation.
class VREL_EXPORT Gk_PacketInputStream : public VRELFilterInputStream {
 public:
  // Allocates a packet of `size` bytes and reads nothing. A stream with a size below 1 is always at the end of input.
  // Errors: throws VRELAllocException.
  Gk_PacketInputStream(VRELInputStream* underlying, int size);
  Gk_PacketInputStream(Gk_PacketInputStream const&) = delete;
  Gk_PacketInputStream& operator=(Gk_PacketInputStream const&) = delete;

  // Returns null: a packet cannot be shared.
  VRELInputStream* duplicate() override;
  int readChar() override { return position < end ? takeByte() : readNextPacket(); }
  // Reads up to `count` bytes, from as many packets as needed. Returns their number, or -1 if there are none or `count`
  // is negative.
  // Compatibility: a request for 0 bytes with an empty packet fetches a packet, and returns -1 at the end of input.
  int read(char* target, int count) override;
  // Like read, but drops the bytes.
  long skip(long count) override;
  // Returns the unread bytes of the packet plus those of the underlying stream.
  long available() const override;
  // Moves back in the packet without comparing the bytes. If `text` is longer than the part that was read, pushes the
  // unread bytes and then `text` back to the underlying stream. Returns true.
  bool add(Gk_String const& text) override;
  // Returns the position of the next byte to be read.
  long getCurrentOffset() const override;
  // Pushes the unread bytes back, and moves the underlying stream.
  long setOffset(long offset) override;

  // Replaces the packet by the next one. A failed read leaves an empty packet.
  virtual void fetchPacket();

 private:
  int takeByte() { return static_cast<unsigned char>(buffer.begin()[position++]); }
  int readNextPacket();
  int unread() const { return end > position ? end - position : 0; }
  long take(char* target, long count);
  void giveBackUnread();

  Gk_String buffer;  // its length is the packet size
  int position = 0;
  int end = 0;  // result of the last fetch; -1 if it failed
};
