// Abstract output stream of bytes.
#pragma once

#include "VRELExport.h"

// Base class of all output streams. Derive from it and implement write, flush and close.
//
//   class Counter : public VRELOutputStream {
//    public:
//     int write(char const*, int count) override { total += count; return count; }
//     void flush() override {}
//     void close() override {}
//     long total = 0;
//   };
//
// A stream does not buffer: each write goes to the target at once, and short writes are returned and not completed. Add
// buffering with Gk_PacketOutputStream.
//
// Thread safety: a stream is used by one thread at a time.
class VREL_EXPORT VRELOutputStream {
 public:
  VRELOutputStream() = default;
  VRELOutputStream(VRELOutputStream const&) = default;
  VRELOutputStream& operator=(VRELOutputStream const&) = default;
  virtual ~VRELOutputStream();

  // Writes one byte through write and returns its result.
  virtual int writeChar(char c);
  // Writes `count` bytes and returns how many were written, or -1 on failure.
  virtual int write(char const* buffer, int count) = 0;
  virtual void flush() = 0;
  virtual void close() = 0;

 protected:
  // For filters. The underlying stream is not owned.
  explicit VRELOutputStream(VRELOutputStream* underlying) : target(underlying) {}

  // Underlying stream of a filter, not owned; null in other streams.
  VRELOutputStream* target = nullptr;
};
