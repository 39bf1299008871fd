// Reads a file byte by byte, at any position.
#pragma once

#include <cstdio>

#include "VRELBufferHandler.h"
#include "VRELExport.h"
#include "VRELFileHandle.h"
#include "VRINResult.h"

// A window of up to 4 MiB that slides over an open C stream. A file that fits is held whole; otherwise a position
// outside the window makes it start anew just there. Within the window a byte costs no system call.
//
//   VRELFileHandle const file(new VRELFile("wheel.dat"));
//   std::FILE* stream = nullptr;
//   if (file->GetFilePointer(stream, VRELFile::BinaryOpen).IsFailure()) ...
//   VRELBufferFileHandler bytes(file);
//   unsigned char first = 0;
//   if (bytes.GetChar(0, first).IsSuccess()) ...
//
// The stream must be open and stand at its beginning; it is not closed here, and nobody else may close it meanwhile. A
// VRELFile that had opened it and has opened another one since counts as one without a stream; one that was given the
// stream may forget it. The size of the file is the one that it had at the start: a file that grows ends there.
//
// Problems are told on standard output, without a line end. Results besides those of VRINResult.h:
//
//   0x1000008  no stream
//   0x1000051  no block, or one of size 0
//   0x1000052  a position beyond the end of the file
//   0x1000053  no size for the block
//   0x1000054  nothing read, and the stream flags neither an error nor its end
//   0x1000055  nothing read, because of an error or the end of the stream
//   0x1000056  GetChar could not move the window
//
// A window that nothing could be read into is the end of the object's use: it is promised that the block is then given
// up without being released. Callers stop at the first failure.
class VREL_EXPORT VRELBufferFileHandler : public VRELBufferHandler {
 public:
  // Makes the block and reads the first window. Failures show in the later calls of GetChar.
  VRELBufferFileHandler(VRELFileHandle const& file);
  ~VRELBufferFileHandler() override;

  // Exported although it is inline, so that a program may find it in the table of operations and call it in place.
  //
  // 0x1000056 for a position that is negative or beyond the end, what FillBuffer gives where the window had to move.
  // That the position just behind the last byte gives 0x1000055 without a word is promised.
  VREL_EXPORT VRINResult GetChar(long position, unsigned char& value) override {
    unsigned long const place = static_cast<unsigned long>(position);
    // A start behind the place wraps round to more than any window holds.
    unsigned long const index = place - windowStart;
    if (index < readable) {
      value = static_cast<unsigned char>(cursor[index]);
      return VREL_S_OK;
    }
    return GetCharOutside(place, value);
  }

  // Whether there is a block and it has a size.
  VRINResult IsBufferValid();

  // VREL_S_OK for a position in the window, otherwise VREL_E_FAIL.
  VRINResult IsPointerPositionValid(unsigned long position);

  // Moves the start of the window and the stream, and reads nothing. That up to the old end of the window GetChar then
  // gives what the block still holds, as if it began there, is promised: fill it first.
  VRINResult AdvanceFilePointerPosition(unsigned long position);

  // Reads the window from where the stream stands.
  VRINResult FillBuffer();

  // Makes a block of the decided size, of which nothing is read yet.
  VRINResult AllocateBuffer();

  // The size of the file, 4 MiB at most; 2048 bytes where that is 0 or the path is not known. Always VREL_S_OK.
  VRINResult DecideFileBufferSize();

 private:
  // Never inlined, so that the way within the window saves no register.
  [[gnu::noinline]] VRINResult GetCharOutside(unsigned long position, unsigned char& value);
  bool HasStream() const;
  unsigned long ReadWindow();

  std::FILE* filePointer = nullptr;
  VRELFileHandle file;
  unsigned long fileSize = 0;
  unsigned long bytesInBuffer = 0;
  unsigned long bufferSize = 0;
  char* cursor = nullptr;
  unsigned long windowStart = 0;
  unsigned long windowEnd = 0;
  unsigned long readable = 0;       // how many bytes of the window are in the block
  unsigned long blockFilled = 0;    // how many bytes of the block were ever read into it
  unsigned long blockCapacity = 0;  // what the block really holds, which may be less than its decided size
  bool isOpenedByFile = false;      // whether the VRELFile closes the stream when it opens another
};
