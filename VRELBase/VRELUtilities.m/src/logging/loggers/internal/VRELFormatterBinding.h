// Scope in which a formatter writes to a stream.
#pragma once

#include "VRELOutputStream.h"
#include "VRELStreamFormatter.h"

// Binds a formatter to a stream in the constructor. The destructor flushes the stream and unbinds it, so that the
// stream may be deleted before the formatter.
class VRELFormatterBinding {
 public:
  // The stream may be null.
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
