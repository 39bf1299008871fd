// The bytes of a STEP file.
#pragma once

#include <cstddef>
#include <cstdio>

#include "VRELBuffer.h"
#include "VRELBufferFileHandlerHandle.h"

class StepFormatReader;

// Reads a file by position through a window that slides over it, so the memory does not depend on the length. The file
// must have a length: a pipe has none.
//
// Polls Gk_ErrMgr for an abort at each mebibyte, besides those who read from here.
//
// A file that becomes shorter while it is read ends where its bytes end. One that the system cannot read on throws a
// ReadFailure: half a document must not pass for a whole one.
class StepBuffer : public VRELBuffer {
 public:
  static constexpr int END = -1;

  // Opens the file's path. The document is the one whose entities read from here; not owned.
  StepBuffer(VRELFileHandle const& source, StepFormatReader* document);
  ~StepBuffer() override;

  // VREL_S_OK if there is something to read from: an empty file is valid, a folder is not.
  VRINResult IsValid() override;
  // Single bytes and lines, from the present position on. Each fails at the end of the file and leaves its argument
  // alone then.
  VRINResult ReadChar(char& byte) override;
  VRINResult ReadUChar(unsigned char& byte) override;
  // The bytes up to the next line end, which is passed over, as UTF-8.
  VRINResult ReadLine(VRELString& line) override;
  // A position at or before the end of the file.
  VRINResult SetOffset(unsigned long position) override;
  VRINResult GetOffset(unsigned long& position) override;

  // Bytes from a place on, past the window and without a move. Gives how many there were.
  std::size_t ReadAt(unsigned long place, char* bytes, std::size_t room) const;

  // The byte at the present position, 0 to 255, or END.
  int Peek() { return next != UNKNOWN ? next : Load(); }
  // The same, and goes past it.
  int Take() {
    int const byte = Peek();
    if (byte != END) {
      ++offset;
      next = UNKNOWN;
    }
    return byte;
  }

  unsigned long Offset() const noexcept { return offset; }
  unsigned long Size() const noexcept { return size; }
  StepFormatReader& Document() const noexcept { return *owner; }

 private:
  static constexpr int UNKNOWN = -2;

  int Load();

  StepFormatReader* owner;
  std::FILE* stream = nullptr;  // of the file, which owns it
  VRELBufferFileHandlerHandle window;
  unsigned long offset = 0;
  unsigned long size = 0;
  int next = UNKNOWN;
  int descriptor = -1;  // of the file's own stream
  bool valid = false;
};
