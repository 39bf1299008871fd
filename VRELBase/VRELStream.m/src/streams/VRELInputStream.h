// The base of everything that bytes are read from.
#pragma once

#include "Gk_String.h"
#include "VRELExport.h"

// A source of bytes. A stream reads nothing ahead: each read goes to what lies beneath, and a short one is told as it
// came. Derive from it and give it duplicate and read, and of the others what the source can do; the rest raises
// "Gk_IOException" as a Gk_Exception through Gk_ErrMgr. A stream is used on one thread at a time.
class VREL_EXPORT VRELInputStream {
 public:
  VRELInputStream() = default;
  VRELInputStream(VRELInputStream const&) = default;
  VRELInputStream& operator=(VRELInputStream const&) = default;
  virtual ~VRELInputStream();

  // A stream on the same source, owned by the caller; null where that cannot be.
  virtual VRELInputStream* duplicate() = 0;
  // The next byte, 0 to 255, read through read; -1 at the end and on failure alike.
  virtual int readChar();
  // Reads up to `count` bytes and returns how many came: 0 at the end, -1 on failure.
  virtual int read(char* buffer, int count) = 0;
  // Moves forward. Unless a stream can do better, reads `count` bytes away and returns how many there were; nothing for
  // a count below 1.
  virtual long skip(long count);

  // These raise unless a stream has its own.
  //
  // How much is left.
  virtual long available() const;
  // Pushes back what was just read: moves back by text.len() bytes, which counts the terminator of a string that has
  // one. Whether the text is what stands there is not looked at.
  virtual bool add(Gk_String const& text);
  // Tells and sets the position in bytes from the start; both return where the stream then stands.
  virtual long getCurrentOffset() const;
  virtual long setOffset(long offset);

 protected:
  explicit VRELInputStream(VRELInputStream* beneath) : source(beneath) {}

  // The stream beneath a filter, not owned; null in any other stream.
  VRELInputStream* source = nullptr;
};
