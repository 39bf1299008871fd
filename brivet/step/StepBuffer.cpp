// The window is a block of the file in memory, so that scanners can search many bytes at once. It moves when the byte
// at an offset outside is read, to begin there. It is small enough for the second-level cache: a larger one is written
// to memory and read from there again.
#include "StepBuffer.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include "Gk_ErrMgr.h"
#include "InputError.h"
#include "VRELFile.h"
#include "VRELFilePath.h"
#include "VRELString.h"

namespace {

constexpr unsigned long kPollInterval = 1UL << 20U;  // bytes
constexpr unsigned long kWindowSize = 1UL << 18U;

// Opening a pipe would block until it has a writer.
bool IsRegularFile(VRELFile const& file) {
  VRELFilePath path;
  struct stat status;
  return file.GetFilePath(path).IsSuccess() && path.GetFileStats(status).IsSuccess() && S_ISREG(status.st_mode);
}

[[noreturn]] void FailToRead(unsigned long position) {
  throw ReadFailure{"cannot read beyond byte " + std::to_string(position) + ": " + std::strerror(errno)};
}

}  // namespace

StepBuffer::StepBuffer(VRELFileHandle const& source, StepFormatReader* document) : VRELBuffer(source), owner(document) {
  VRELFileHandle opened(source);
  if (!opened.IsValid() || !IsRegularFile(*opened)) return;
  std::FILE* stream = nullptr;  // owned by the file
  if (!opened->GetFilePointer(stream, VRELFile::BinaryOpen).IsSuccess()) return;
  struct stat status;
  if (fstat(fileno(stream), &status) != 0 || !S_ISREG(status.st_mode)) return;
  valid = true;
  descriptor = fileno(stream);
  size = static_cast<unsigned long>(status.st_size);
  end = size;
  block = std::make_unique<char[]>(std::min(size, kWindowSize) + kPadding);
  cursor = block.get();
  last = cursor;
}

StepBuffer::~StepBuffer() = default;

VRINResult StepBuffer::IsValid() {
  return valid ? VREL_S_OK : VREL_E_FAIL;
}

VRINResult StepBuffer::ReadUChar(unsigned char& byte) {
  int const taken = Take();
  if (taken == kEnd) return VREL_E_FAIL;
  byte = static_cast<unsigned char>(taken);
  return VREL_S_OK;
}

VRINResult StepBuffer::ReadChar(char& byte) {
  int const taken = Take();
  if (taken == kEnd) return VREL_E_FAIL;
  byte = static_cast<char>(taken);
  return VREL_S_OK;
}

VRINResult StepBuffer::ReadLine(VRELString& line) {
  if (Peek() == kEnd) return VREL_E_FAIL;
  std::string bytes;
  int byte = Take();
  for (; byte != kEnd && byte != '\n' && byte != '\r'; byte = Take()) bytes.push_back(static_cast<char>(byte));
  if (byte == '\r' && Peek() == '\n') Take();
  line = VRELString(bytes);
  return VREL_S_OK;
}

VRINResult StepBuffer::SetOffset(unsigned long position) {
  if (position > size) return VREL_E_INVALID_ARGUMENT;
  if (position < begin || position > begin + filled) {
    begin = position;
    filled = 0;
    // Nothing is loaded at the end of a file that was cut, and Block must not show the bytes of the window before.
    std::memset(block.get(), 0, kPadding);
  }
  cursor = block.get() + (position - begin);
  UpdateLast();
  return VREL_S_OK;
}

VRINResult StepBuffer::GetOffset(unsigned long& position) {
  position = Offset();
  return VREL_S_OK;
}

void StepBuffer::LimitTo(unsigned long position) {
  end = std::min(position, size);
  UpdateLast();
}

void StepBuffer::UpdateLast() noexcept {
  unsigned long const wanted = end > begin ? std::min<unsigned long>(end - begin, filled) : 0;
  last = std::max<char const*>(block.get() + wanted, cursor);
}

std::size_t StepBuffer::ReadAt(unsigned long position, char* bytes, std::size_t capacity) const {
  if (!valid) return 0;
  std::size_t done = 0;
  while (done < capacity) {
    ssize_t const taken = pread(descriptor, bytes + done, capacity - done, static_cast<off_t>(position + done));
    if (taken < 0 && errno == EINTR) continue;
    if (taken < 0) FailToRead(position + done);
    if (taken == 0) break;
    done += static_cast<std::size_t>(taken);
  }
  return done;
}

// The end of the window, of the limit or of the file was reached.
int StepBuffer::Load() {
  unsigned long const offset = Offset();
  if (offset >= end) return kEnd;
  // A single comment or string may be very long.
  if (offset / kPollInterval != polled) {
    Gk_ErrMgr::checkAbort();
    polled = offset / kPollInterval;
  }
  begin = offset;
  filled = 0;
  cursor = block.get();
  last = cursor;
  filled = ReadAt(offset, block.get(), std::min(size - offset, kWindowSize));
  std::memset(&block[filled], 0, kPadding);
  if (filled == 0) size = end = offset;
  UpdateLast();
  return filled == 0 ? kEnd : static_cast<unsigned char>(*cursor);
}
