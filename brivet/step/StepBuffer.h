// Bytes of a STEP file.
#pragma once

#include <cstddef>
#include <cstdio>

#include "VRELBuffer.h"
#include "VRELBufferFileHandlerHandle.h"

class StepFormatReader;

// Reads a file by offset through a sliding window, so that memory does not depend on the length of the file. The file
// must be a regular file. Calls Gk_ErrMgr::checkAbort at each mebibyte.
//
// A file that is truncated while it is read ends where its bytes end.
// Errors: ReadFailure if the system cannot read on, so that a part of a document is never taken for the whole.
class StepBuffer : public VRELBuffer {
 public:
  static constexpr int kEnd = -1;

  // Opens the file's path.
  // Ownership: `document`, whose entities read from here, is not owned.
  StepBuffer(VRELFileHandle const& source, StepFormatReader* document);
  ~StepBuffer() override;

  // Returns VREL_S_OK if the file can be read. An empty file is valid, a folder is not.
  VRINResult IsValid() override;
  // Read a byte at the current offset. At the end of the file they fail and leave the argument unchanged.
  VRINResult ReadChar(char& byte) override;
  VRINResult ReadUChar(unsigned char& byte) override;
  // Reads the bytes up to the next line end as UTF-8, and skips the line end.
  VRINResult ReadLine(VRELString& line) override;
  // Requires: `position` is not after the end of the file.
  VRINResult SetOffset(unsigned long position) override;
  VRINResult GetOffset(unsigned long& position) override;

  // Reads bytes from `position` without using the window or moving the offset. Returns the number of bytes read.
  std::size_t ReadAt(unsigned long position, char* bytes, std::size_t capacity) const;

  // Makes the file end at `position` for Peek and Take while it exists. Only one at a time.
  class Limit {
   public:
    Limit(StepBuffer& limited, unsigned long position) : buffer(limited) { buffer.LimitTo(position); }
    ~Limit() { buffer.LimitTo(buffer.size); }
    Limit(Limit const&) = delete;
    Limit& operator=(Limit const&) = delete;

   private:
    StepBuffer& buffer;
  };

  // Returns the byte at the current offset, 0 to 255, or kEnd.
  int Peek() { return next != kUnknown ? next : Load(); }
  // Returns the same and advances.
  int Take() {
    int const byte = Peek();
    if (byte != kEnd) {
      ++offset;
      next = kUnknown;
    }
    return byte;
  }

  unsigned long Offset() const noexcept { return offset; }
  unsigned long Size() const noexcept { return size; }
  StepFormatReader& Document() const noexcept { return *owner; }

 private:
  static constexpr int kUnknown = -2;

  int Load();
  void LimitTo(unsigned long position);

  StepFormatReader* owner;
  std::FILE* stream = nullptr;  // owned by the file
  VRELBufferFileHandlerHandle window;
  unsigned long offset = 0;
  unsigned long size = 0;
  unsigned long end = 0;  // at most size
  int next = kUnknown;
  int descriptor = -1;  // of `stream`
  bool valid = false;
};
