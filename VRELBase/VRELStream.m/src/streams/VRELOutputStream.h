// The base of everything that bytes are written to.
#pragma once

#include "VRELExport.h"

// A place for bytes. A stream holds nothing back: what is written is handed on at once, a short write is told as it
// came and never completed. Derive from it and give it write, flush and close; a stream is used on one thread at a
// time.
class VREL_EXPORT VRELOutputStream {
 public:
  VRELOutputStream() = default;
  VRELOutputStream(VRELOutputStream const&) = default;
  VRELOutputStream& operator=(VRELOutputStream const&) = default;
  virtual ~VRELOutputStream();

  // Writes one byte through write and returns what that gives.
  virtual int writeChar(char c);
  // Writes `count` bytes and returns how many were taken, -1 on failure.
  virtual int write(char const* buffer, int count) = 0;
  virtual void flush() = 0;
  virtual void close() = 0;

 protected:
  explicit VRELOutputStream(VRELOutputStream* beneath) : target(beneath) {}

  // The stream beneath a filter, not owned; null in any other stream.
  VRELOutputStream* target = nullptr;
};
