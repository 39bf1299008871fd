// Writes into memory.
#pragma once

#include "Gk_String.h"
#include "VRELExport.h"
#include "VRELOutputStream.h"

// Gathers the bytes that are written in a Gk_String. No terminator is added: end the text with a zero byte before it is
// read as a C string.
//
//   VRELStringOutputStream out;
//   out.write("bolt", 4);
//   out.writeChar('\0');
//   use(out.contents());  // "bolt"
//
// Copies share the bytes. Memory that runs out throws VRELAllocException.
class VREL_EXPORT VRELStringOutputStream : public VRELOutputStream {
 public:
  VRELStringOutputStream() = default;

  // Adds `count` bytes, which may lie in contents(), and returns `count`. Nothing is added and 0 is returned for null
  // or a count below 1.
  int write(char const* buffer, int count) override;
  // Do nothing.
  void flush() override;
  void close() override;

  // The first byte that was written, null before any was; valid until the next write.
  char const* contents() const { return text; }

 private:
  Gk_String text;
};
