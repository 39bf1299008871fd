// Bytes of a STEP file.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "VRELBuffer.h"

class StepFormatReader;

// Reads a file by offset through a sliding window, so that memory does not depend on the length of the file. The file
// must be a regular file. Calls Gk_ErrMgr::checkAbort at each mebibyte.
//
// A file that is truncated while it is read ends where its bytes end.
// Errors: ReadFailure if the system cannot read on, so that a part of a document is never taken for the whole.
class StepBuffer : public VRELBuffer {
 public:
  static constexpr int kEnd = -1;
  static constexpr std::size_t kPadding = 32;

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
    ~Limit() { buffer.LimitTo(~0UL); }
    Limit(Limit const&) = delete;
    Limit& operator=(Limit const&) = delete;

   private:
    StepBuffer& buffer;
  };

  // Returns the byte at the current offset, 0 to 255, or kEnd.
  int Peek() { return cursor != last ? static_cast<unsigned char>(*cursor) : Load(); }
  // Returns the same and advances.
  int Take() {
    int const byte = Peek();
    if (byte != kEnd) ++cursor;
    return byte;
  }
  // Returns the bytes of the window from the current offset on; none at the end of the file only. Valid until the
  // window moves: as long as the offset stays in it.
  std::string_view Window() {
    if (cursor == last) Load();
    return {cursor, static_cast<std::size_t>(last - cursor)};
  }
  // Returns the same without regard to the limit. kPadding zero bytes follow, which can be read.
  std::string_view Block() {
    if (cursor == last) Load();
    return {cursor, filled - static_cast<std::size_t>(cursor - block.get())};
  }
  // Advances by up to Window().size() bytes.
  void Skip(std::size_t bytes) noexcept { cursor += bytes; }

  unsigned long Offset() const noexcept { return begin + static_cast<unsigned long>(cursor - block.get()); }
  unsigned long Size() const noexcept { return size; }
  StepFormatReader& Document() const noexcept { return *owner; }

 private:
  int Load();
  void LimitTo(unsigned long position);
  void UpdateLast() noexcept;

  StepFormatReader* owner;
  // The window: `filled` bytes of the file from `begin` on, of which those from `cursor` to `last` are still to be
  // read.
  std::unique_ptr<char[]> block;
  unsigned long begin = 0;
  std::size_t filled = 0;
  char const* cursor = nullptr;
  char const* last = nullptr;
  unsigned long size = 0;
  unsigned long end = 0;        // of the bytes to read, at most size
  unsigned long polled = ~0UL;  // interval of bytes in which checkAbort was called last
  int descriptor = -1;          // of the open file
  bool valid = false;
};
