// The base of input streams that stand on another.
#pragma once

#include "VRELExport.h"
#include "VRELInputStream.h"

// Hands every operation on to the stream beneath, which must outlive the filter and is not deleted by it. Derive from
// it, give it duplicate, and change what the filter is for. A copy stands on the same stream.
class VREL_EXPORT VRELFilterInputStream : public VRELInputStream {
 public:
  // The stream must not be null.
  explicit VRELFilterInputStream(VRELInputStream* beneath) : VRELInputStream(beneath) {}

  int readChar() override;
  int read(char* buffer, int count) override;
  long skip(long count) override;
  long available() const override;
  bool add(Gk_String const& text) override;
  long getCurrentOffset() const override;
  long setOffset(long offset) override;
};
