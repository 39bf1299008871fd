// Counts the lines that are read.
#pragma once

#include "VRELExport.h"
#include "VRELFilterInputStream.h"

// Hands the bytes of the stream beneath on and counts the line feeds among them, for messages that tell where in a text
// something stands.
//
//   Gk_IndexedInputStream input(&file);
//   ...
//   VRELWarning::Printf("line %d: no such key\n", input.getLineNumber() + 1);
//
// Lines that skip and setOffset pass over are not counted: that is promised.
class VREL_EXPORT Gk_IndexedInputStream : public VRELFilterInputStream {
 public:
  explicit Gk_IndexedInputStream(VRELInputStream* beneath) : VRELFilterInputStream(beneath) {}
  // Stands on the same stream, with a count of its own that goes on from here.
  Gk_IndexedInputStream(Gk_IndexedInputStream const&) = default;
  Gk_IndexedInputStream& operator=(Gk_IndexedInputStream const&) = default;

  // A stream with this count, which the caller owns, on a duplicate of the stream beneath, which nobody deletes. Where
  // that cannot be duplicated, nothing can be read from the new stream.
  VRELInputStream* duplicate() override;
  int readChar() override;
  int read(char* target, int count) override;
  // Takes the line feeds among all elements of the text off the count, and hands it on. Always true.
  bool add(Gk_String const& text) override;

  // Line feeds read so far, less those pushed back.
  int getLineNumber() const { return lineNumber; }

 private:
  // A count that leaves the range of an int wraps round.
  void moveOn(unsigned lines) { lineNumber = static_cast<int>(static_cast<unsigned>(lineNumber) + lines); }

  int lineNumber = 0;
};
