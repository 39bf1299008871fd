// Base class of output streams on top of another output stream.
#pragma once

#include "VRELExport.h"
#include "VRELOutputStream.h"

// Forwards every operation to the underlying stream. Derive from it and override what the filter changes.
//
//   class Counter : public VRELFilterOutputStream {
//    public:
//     using VRELFilterOutputStream::VRELFilterOutputStream;
//     int write(char const* buffer, int count) override {
//       total += count;
//       return VRELFilterOutputStream::write(buffer, count);
//     }
//     long total = 0;
//   };
//
// Ownership: the underlying stream is not owned and must outlive the filter. A copy uses the same underlying stream.
class VREL_EXPORT VRELFilterOutputStream : public VRELOutputStream {
 public:
  // Requires: `underlying` is not null.
  explicit VRELFilterOutputStream(VRELOutputStream* underlying) : VRELOutputStream(underlying) {}

  int writeChar(char c) override;
  int write(char const* buffer, int count) override;
  void flush() override;
  void close() override;
};
