#include "VRELBufferFileHandler.h"

#include <sys/stat.h>

#include <algorithm>
#include <new>

#include "VRELFilePath.h"

// The window is a copy of the bytes [windowStart, windowEnd) of the file. `readable` counts the bytes that GetChar
// returns without moving the window; it is 0 in every state without a block, so that one comparison covers all of them.
// A position outside the window restarts the window at this position: forward reading is sequential, and a step back at
// the start of the window reads a whole window again.
namespace {

constexpr long kNoStream = 0x1000008;
constexpr long kNoBlock = 0x1000051;
constexpr long kBeyondEnd = 0x1000052;
constexpr long kNoBufferSize = 0x1000053;
constexpr long kNothingRead = 0x1000054;
constexpr long kErrorOrEnd = 0x1000055;
constexpr long kWindowStays = 0x1000056;

constexpr unsigned long kSmallBlock = 2048;
constexpr unsigned long kLargestBlock = 0x400000;

void Print(char const* message) {
  std::fputs(message, stdout);
}

}  // namespace

VRELBufferFileHandler::VRELBufferFileHandler(VRELFileHandle const& source) : file(source) {
  if (!file.IsValid() || file->GetFilePointer(filePointer).IsFailure()) {
    Print("File pointer is NULL!!!");
    return;
  }
  isOpenedByFile = file->GetFilePointerOpenType() != VRELFile::NoOpen;
  DecideFileBufferSize();
  if (AllocateBuffer().IsSuccess()) FillBuffer();
}

VRELBufferFileHandler::~VRELBufferFileHandler() = default;

// Returns whether the stream is open. A VRELFile that opened it and now has another one has closed it.
bool VRELBufferFileHandler::HasStream() const {
  if (!isOpenedByFile) return filePointer != nullptr;
  std::FILE* present = nullptr;
  return file->GetFilePointer(present).IsSuccess() && present == filePointer;
}

VRINResult VRELBufferFileHandler::IsBufferValid() {
  VRINResult result = VREL_S_OK;
  if (buffer == nullptr) {
    Print("Buffer is NULL. Looks like allocation of buffer failed!!!");
    result = kNoBlock;
  }
  if (bufferSize == 0) {
    Print("Buffer is allocated of size 0!!!");
    result = kNoBlock;
  }
  return result;
}

VRINResult VRELBufferFileHandler::IsPointerPositionValid(unsigned long position) {
  return windowStart <= position && windowEnd > position ? VREL_S_OK : VREL_E_FAIL;
}

VRINResult VRELBufferFileHandler::AdvanceFilePointerPosition(unsigned long position) {
  if (!HasStream()) return kNoStream;
  if (position > fileSize) return kBeyondEnd;
  windowStart = position;
  readable = position < windowEnd ? std::min(windowEnd - position, blockFilled) : 0;
  std::fseek(filePointer, static_cast<long>(position), SEEK_SET);
  return VREL_S_OK;
}

// Returns the number of bytes read. Without a block, reads one byte and pushes it back, to set the flags of the stream.
unsigned long VRELBufferFileHandler::ReadWindow() {
  if (buffer != nullptr) return std::fread(buffer, 1, std::min(bufferSize, blockCapacity), filePointer);
  int const byte = std::getc(filePointer);
  if (byte != EOF) std::ungetc(byte, filePointer);
  return 0;
}

VRINResult VRELBufferFileHandler::FillBuffer() {
  if (!HasStream()) return kNoStream;
  bytesInBuffer = ReadWindow();
  readable = bytesInBuffer;
  blockFilled = std::max(blockFilled, bytesInBuffer);
  if (bytesInBuffer > 0) {
    windowEnd = windowStart + bytesInBuffer;
    return VREL_S_OK;
  }
  // Compatibility: the block is not freed.
  buffer = nullptr;
  cursor = nullptr;
  blockFilled = 0;
  if (std::ferror(filePointer) != 0) {
    Print("VRELBufferFileHandler::FillBuffer: Error has occured !!!!");
    return kErrorOrEnd;
  }
  // Compatibility: the message about the end of the file is printed only if the stream does not flag it.
  if (std::feof(filePointer) == 0) {
    Print("VRELBufferFileHandler::FillBuffer: Reached end of file !!!!");
    return kNothingRead;
  }
  return kErrorOrEnd;
}

VRINResult VRELBufferFileHandler::AllocateBuffer() {
  if (bufferSize == 0) {
    Print("VRELBufferFileHandler::AllocateBuffer: Buffer size undefined!!!!");
    return kNoBufferSize;
  }
  delete[] buffer;
  readable = 0;
  blockFilled = 0;
  blockCapacity = bufferSize;
  buffer = new (std::nothrow) char[blockCapacity];
  if (buffer == nullptr) {
    blockCapacity = kSmallBlock;
    buffer = new (std::nothrow) char[blockCapacity];
  }
  cursor = buffer;
  if (buffer == nullptr) {
    Print("VRELBufferFileHandler::AllocateBuffer: Buffer not allocated properly!!!!");
    return kNoBlock;
  }
  return VREL_S_OK;
}

VRINResult VRELBufferFileHandler::DecideFileBufferSize() {
  VRELFilePath path;
  struct stat stats = {};
  if (file.IsValid()) file->GetFilePath(path);
  if (path.GetFileStats(stats).IsSuccess()) {
    fileSize = static_cast<unsigned long>(stats.st_size);
    bufferSize = fileSize;
  }
  if (bufferSize == 0) bufferSize = kSmallBlock;
  bufferSize = std::min(bufferSize, kLargestBlock);
  return VREL_S_OK;
}

VRINResult VRELBufferFileHandler::GetCharOutside(unsigned long position, unsigned char& value) {
  if (AdvanceFilePointerPosition(position).IsFailure()) {
    Print("VRELBufferFileHandler::GetChar: Unable to get next info from buffer!!!");
    return kWindowStays;
  }
  VRINResult const result = FillBuffer();
  if (result.IsSuccess()) value = static_cast<unsigned char>(*cursor);
  return result;
}
