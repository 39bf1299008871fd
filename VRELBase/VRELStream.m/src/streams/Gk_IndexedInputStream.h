// Input filter that counts lines.
#pragma once

#include "VRELExport.h"
#include "VRELFilterInputStream.h"

// Forwards the bytes of the underlying stream and counts the line feeds among them, for messages with a line number.
//
//   Gk_IndexedInputStream input(&file);
//   ...
//   VRELWarning::Printf("line %d: unknown key\n", input.getLineNumber() + 1);
//
// Compatibility: line feeds that skip and setOffset pass are not counted.
class VREL_EXPORT Gk_IndexedInputStream : public VRELFilterInputStream {
 public:
  // Starts at line number 0. A null stream is at the end of input.
  explicit Gk_IndexedInputStream(VRELInputStream* underlying) : VRELFilterInputStream(underlying) {}
  // Uses the same underlying stream, and copies the line number.
  Gk_IndexedInputStream(Gk_IndexedInputStream const&) = default;
  Gk_IndexedInputStream& operator=(Gk_IndexedInputStream const&) = default;

  // Returns a copy on a duplicate of the underlying stream. If that cannot be duplicated, the copy is at the end of
  // input.
  // Ownership: the caller deletes the copy. The duplicate is not deleted by the copy.
  VRELInputStream* duplicate() override;
  int readChar() override;
  int read(char* target, int count) override;
  // Subtracts the line feeds among all elements of `text`, forwards it, and returns true.
  bool add(Gk_String const& text) override;

  // Returns the number of line feeds read so far, less those pushed back.
  int getLineNumber() const { return lineNumber; }

 private:
  // Adds with wrap-around.
  void countLines(unsigned lines) { lineNumber = static_cast<int>(static_cast<unsigned>(lineNumber) + lines); }

  int lineNumber = 0;
};
