// Binds a formatter that an object keeps to a stream, for as long as one text takes.
#pragma once

#include "VRELOutputStream.h"
#include "VRELStreamFormatter.h"

// Flushes the stream at the end, and leaves the formatter without one: the stream may be gone before the formatter.
class VRELFormatterBinding {
 public:
  // A null stream is allowed.
  VRELFormatterBinding(VRELStreamFormatter& boundFormatter, VRELOutputStream* stream)
      : formatter(boundFormatter), output(stream) {
    formatter.installOutputStream(stream);
  }
  ~VRELFormatterBinding() {
    if (output != nullptr) output->flush();
    formatter.installOutputStream(nullptr);
  }
  VRELFormatterBinding(VRELFormatterBinding const&) = delete;
  VRELFormatterBinding& operator=(VRELFormatterBinding const&) = delete;

 private:
  VRELStreamFormatter& formatter;
  VRELOutputStream* output;
};
