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
#include "VRELBufferFileHandler.h"
#include "VRELFile.h"
#include "VRELFilePath.h"
#include "VRELString.h"

namespace {

constexpr unsigned long kPollInterval = 1UL << 20U;  // bytes

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
  if (!opened->GetFilePointer(stream, VRELFile::BinaryOpen).IsSuccess()) return;
  struct stat status;
  if (fstat(fileno(stream), &status) != 0 || !S_ISREG(status.st_mode)) return;
  valid = true;
  descriptor = fileno(stream);
  size = static_cast<unsigned long>(status.st_size);
  end = size;
  // The window cannot be used for an empty file: it would read after the end and drop its block.
  if (size == 0) return;
  window = new VRELBufferFileHandler(source);
  handler = window;
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
  offset = position;
  next = kUnknown;
  return VREL_S_OK;
}

VRINResult StepBuffer::GetOffset(unsigned long& position) {
  position = offset;
  return VREL_S_OK;
}

void StepBuffer::LimitTo(unsigned long position) {
  end = std::min(position, size);
  next = kUnknown;
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

int StepBuffer::Load() {
  // A single comment or string may be very long.
  if (offset % kPollInterval == 0) Gk_ErrMgr::checkAbort();
  if (offset >= end) return next = kEnd;
  unsigned char byte = 0;
  // A qualified call, because a virtual one for each byte is slow.
  bool const isRead = static_cast<VRELBufferFileHandler*>(handler)
                          ->VRELBufferFileHandler::GetChar(static_cast<long>(offset), byte)
                          .IsSuccess();
  if (!isRead && stream != nullptr && std::ferror(stream) != 0) FailToRead(offset);
  if (!isRead) size = end = offset;
  return next = isRead ? byte : kEnd;
}
