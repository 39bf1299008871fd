// Abstract input stream of bytes.
#pragma once

#include "Gk_String.h"
#include "VRELExport.h"

// Base class of all input streams. Derive from it, implement duplicate and read, and override the other operations that
// the source supports; those that are not overridden raise "Gk_IOException" as a Gk_Exception through Gk_ErrMgr.
//
//   class RandomBytes : public VRELInputStream {
//    public:
//     VRELInputStream* duplicate() override { return nullptr; }
//     int read(char* buffer, int count) override { return static_cast<int>(getrandom(buffer, count, 0)); }
//   };
//
// A stream does not read ahead, and it returns short reads as the source delivers them. Add buffering with
// Gk_PacketInputStream.
//
// Thread safety: a stream is used by one thread at a time.
class VREL_EXPORT VRELInputStream {
 public:
  VRELInputStream() = default;
  VRELInputStream(VRELInputStream const&) = default;
  VRELInputStream& operator=(VRELInputStream const&) = default;
  virtual ~VRELInputStream();

  // Returns a new stream on the same source, or null if the source cannot be shared.
  // Ownership: the caller deletes it.
  virtual VRELInputStream* duplicate() = 0;
  // Reads one byte through read and returns it as 0 to 255; -1 at the end of input and on failure.
  virtual int readChar();
  // Reads up to `count` bytes and returns their number; 0 at the end of input, -1 on failure.
  virtual int read(char* buffer, int count) = 0;
  // Skips `count` bytes by reading them, and returns how many there were; 0 for a count below 1.
  // Compatibility: ends early only if read returns -1. While read returns 0 it is called again, so that a stream whose
  // read returns 0 at the end of input must override skip.
  virtual long skip(long count);

  // Returns how many bytes are left.
  virtual long available() const;
  // Pushes back bytes that were just read: moves back by text.len() bytes, which includes the terminator of a string
  // that has one. The content of `text` is not compared with the source.
  virtual bool add(Gk_String const& text);
  // Returns the position in bytes from the start.
  virtual long getCurrentOffset() const;
  // Sets the position and returns the new one.
  virtual long setOffset(long offset);

 protected:
  // For filters. The underlying stream is not owned.
  explicit VRELInputStream(VRELInputStream* underlying) : source(underlying) {}

  // Underlying stream of a filter, not owned; null in other streams.
  VRELInputStream* source = nullptr;
};
