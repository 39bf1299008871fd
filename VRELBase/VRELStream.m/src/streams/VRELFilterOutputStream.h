// The base of output streams that stand on another.
#pragma once

#include "VRELExport.h"
#include "VRELOutputStream.h"

// Hands every operation on to the stream beneath, which must outlive the filter and is not deleted by it. Derive from
// it and change what the filter is for. A copy stands on the same stream.
class VREL_EXPORT VRELFilterOutputStream : public VRELOutputStream {
 public:
  // The stream must not be null.
  explicit VRELFilterOutputStream(VRELOutputStream* beneath) : VRELOutputStream(beneath) {}

  int writeChar(char c) override;
  int write(char const* buffer, int count) override;
  void flush() override;
  void close() override;
};
