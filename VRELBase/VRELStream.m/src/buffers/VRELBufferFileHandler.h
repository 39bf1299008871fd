// Random access to the bytes of a file.
#pragma once

#include <cstdio>

#include "VRELBufferHandler.h"
#include "VRELExport.h"
#include "VRELFileHandle.h"
#include "VRINResult.h"

// Window of up to 4 MiB over an open C stream. A file that fits is kept in memory as a whole. Otherwise a position
// outside the window moves the start of the window to it. Reads within the window make no system call.
//
//   VRELFileHandle const file(new VRELFile("wheel.dat"));
//   std::FILE* stream = nullptr;
//   if (file->GetFilePointer(stream, VRELFile::BinaryOpen).IsFailure()) ...
//   VRELBufferFileHandler bytes(file);
//   unsigned char first = 0;
//   if (bytes.GetChar(0, first).IsSuccess()) ...
//
// Requires: the stream is open and at its beginning, and is not closed while the object is used. If the VRELFile opened
// the stream and opens another one, the object has no stream any more. The size of the file is read once: bytes that
// are appended later are not read.
//
// Errors are printed on standard output, without a line end. Result codes other than those of VRINResult.h:
//
//   0x1000008  no stream
//   0x1000051  no block, or a block of size 0
//   0x1000052  position after the end of the file
//   0x1000053  no block size
//   0x1000054  nothing read, and neither an error nor the end of the stream is flagged
//   0x1000055  nothing read because of an error or the end of the stream
//   0x1000056  GetChar could not move the window
//
// Compatibility: a read that returns nothing drops the block without freeing it. Stop at the first failure.
class VREL_EXPORT VRELBufferFileHandler : public VRELBufferHandler {
 public:
  // Allocates the block and reads the first window. Errors are returned by the later calls of GetChar.
  VRELBufferFileHandler(VRELFileHandle const& file);
  ~VRELBufferFileHandler() override;

  // Reads the byte at a position.
  // Errors: 0x1000056 for a position that is negative or after the end; those of FillBuffer if the window moves.
  // Compatibility: the position after the last byte returns 0x1000055 and prints nothing.
  //
  // Inline for speed, and exported for its virtual table entry.
  VREL_EXPORT VRINResult GetChar(long position, unsigned char& value) override {
    unsigned long const place = static_cast<unsigned long>(position);
    // For a position before the window the difference wraps to a value above any window size.
    unsigned long const index = place - windowStart;
    if (index < readable) {
      value = static_cast<unsigned char>(cursor[index]);
      return VREL_S_OK;
    }
    return GetCharOutside(place, value);
  }

  // Returns whether there is a block with a size.
  VRINResult IsBufferValid();

  // Returns VREL_S_OK for a position in the window, otherwise VREL_E_FAIL.
  VRINResult IsPointerPositionValid(unsigned long position);

  // Moves the start of the window and the stream, and reads nothing.
  // Compatibility: until FillBuffer is called, GetChar returns old bytes of the block for positions up to the old end
  // of the window.
  VRINResult AdvanceFilePointerPosition(unsigned long position);

  // Reads the window at the position of the stream.
  VRINResult FillBuffer();

  // Allocates a block of the size that DecideFileBufferSize chose.
  VRINResult AllocateBuffer();

  // Sets the block size to the size of the file, at most 4 MiB; to 2048 bytes if that is 0 or unknown. Returns
  // VREL_S_OK.
  VRINResult DecideFileBufferSize();

 private:
  // Out of line, so that GetChar needs no saved registers within the window.
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
  unsigned long readable = 0;       // bytes of the window that are in the block
  unsigned long blockFilled = 0;    // largest number of bytes read into the block
  unsigned long blockCapacity = 0;  // allocated size, which can be less than bufferSize
  bool isOpenedByFile = false;      // the VRELFile opened the stream
};
