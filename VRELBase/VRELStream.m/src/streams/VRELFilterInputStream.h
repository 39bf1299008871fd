// Base class of input streams on top of another input stream.
#pragma once

#include "VRELExport.h"
#include "VRELInputStream.h"

// Forwards every operation to the underlying stream. Derive from it, implement duplicate and override what the filter
// changes.
//
//   class UpperCase : public VRELFilterInputStream {
//    public:
//     using VRELFilterInputStream::VRELFilterInputStream;
//     VRELInputStream* duplicate() override { return nullptr; }
//     int readChar() override { return std::toupper(VRELFilterInputStream::readChar()); }
//   };
//
// Ownership: the underlying stream is not owned and must outlive the filter. A copy uses the same underlying stream.
class VREL_EXPORT VRELFilterInputStream : public VRELInputStream {
 public:
  // Requires: `underlying` is not null.
  explicit VRELFilterInputStream(VRELInputStream* underlying) : VRELInputStream(underlying) {}

  int readChar() override;
  int read(char* buffer, int count) override;
  long skip(long count) override;
  long available() const override;
  bool add(Gk_String const& text) override;
  long getCurrentOffset() const override;
  long setOffset(long offset) override;
};
