// Output stream into a string in memory.
#pragma once

#include "Gk_String.h"
#include "VRELExport.h"
#include "VRELOutputStream.h"

// Appends the bytes that are written to a Gk_String.
// Compatibility: no terminator is added; write a zero byte before contents() is used as a C string.
//
//   VRELStringOutputStream out;
//   out.write("bolt", 4);
//   out.writeChar('\0');
//   use(out.contents());  // "bolt"
//
// Copies share the bytes.
// Errors: throws VRELAllocException.
class VREL_EXPORT VRELStringOutputStream : public VRELOutputStream {
 public:
  VRELStringOutputStream() = default;

  // Appends `count` bytes, which may be part of contents(), and returns `count`. Appends nothing and returns 0 for null
  // or a count below 1.
  int write(char const* buffer, int count) override;
  // Does nothing.
  void flush() override;
  // Does nothing.
  void close() override;

  // Returns the first byte, or null before any was written. Valid until the next write.
  char const* contents() const { return text; }

 private:
  Gk_String text;
};
