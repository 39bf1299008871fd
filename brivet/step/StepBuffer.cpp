#include "StepBuffer.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>

#include "Gk_ErrMgr.h"
#include "InputError.h"
#include "VRELBufferFileHandler.h"
#include "VRELFile.h"
#include "VRELFilePath.h"
#include "VRELString.h"

namespace {

constexpr unsigned long POLL_STEP = 1UL << 20U;  // bytes

// Opening a pipe would wait for somebody to write into it.
bool IsRegularFile(VRELFile const& file) {
  VRELFilePath path;
  struct stat status;
  return file.GetFilePath(path).IsSuccess() && path.GetFileStats(status).IsSuccess() && S_ISREG(status.st_mode);
}

[[noreturn]] void FailToRead(unsigned long place) {
  throw ReadFailure{"expected a document that can be read to its end, found an error of the system behind byte " +
                    std::to_string(place) + "; check where it lies, and translate it again"};
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
  // The window is not asked for an empty file: it would look for bytes behind the end, and lose its block.
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
  if (taken == END) return VREL_E_FAIL;
  byte = static_cast<unsigned char>(taken);
  return VREL_S_OK;
}

VRINResult StepBuffer::ReadChar(char& byte) {
  int const taken = Take();
  if (taken == END) return VREL_E_FAIL;
  byte = static_cast<char>(taken);
  return VREL_S_OK;
}

VRINResult StepBuffer::ReadLine(VRELString& line) {
  if (Peek() == END) return VREL_E_FAIL;
  std::string bytes;
  int byte = Take();
  for (; byte != END && byte != '\n' && byte != '\r'; byte = Take()) bytes.push_back(static_cast<char>(byte));
  if (byte == '\r' && Peek() == '\n') Take();
  line = VRELString(bytes);
  return VREL_S_OK;
}

VRINResult StepBuffer::SetOffset(unsigned long position) {
  if (position > size) return VREL_E_INVALID_ARGUMENT;
  offset = position;
  next = UNKNOWN;
  return VREL_S_OK;
}

VRINResult StepBuffer::GetOffset(unsigned long& position) {
  position = offset;
  return VREL_S_OK;
}

std::size_t StepBuffer::ReadAt(unsigned long place, char* bytes, std::size_t room) const {
  if (!valid) return 0;
  ssize_t taken = -1;
  do {
    taken = pread(descriptor, bytes, room, static_cast<off_t>(place));
  } while (taken < 0 && errno == EINTR);
  if (taken < 0) FailToRead(place);
  return static_cast<std::size_t>(taken);
}

int StepBuffer::Load() {
  // A single comment or string may be longer than anybody waits for.
  if (offset % POLL_STEP == 0) Gk_ErrMgr::checkAbort();
  unsigned char byte = 0;
  // The call names its class: it need not go through the virtual table.
  bool const there = offset < size && static_cast<VRELBufferFileHandler*>(handler)
                                          ->VRELBufferFileHandler::GetChar(static_cast<long>(offset), byte)
                                          .IsSuccess();
  if (!there && stream != nullptr && std::ferror(stream) != 0) FailToRead(offset);
  if (!there) size = offset;
  next = there ? byte : END;
  return next;
}
