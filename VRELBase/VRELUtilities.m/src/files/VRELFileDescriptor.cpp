#include "VRELFileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Gk_ErrMgr.h"
#include "Gk_Exception.h"
#include "VRELFilePath.h"
#include "VRELString.h"

namespace {

constexpr int kWriteFlags = O_WRONLY | O_CREAT | O_TRUNC;
constexpr mode_t kWritePermissions = S_IRUSR | S_IWUSR;

VRELFileDescriptor::IOMode FindMode(int descriptor) {
  struct stat stats = {};
  fstat(descriptor, &stats);
  bool const canRead = (stats.st_mode & S_IRUSR) != 0;
  bool const canWrite = (stats.st_mode & S_IWUSR) != 0;
  if (canRead && canWrite) return VRELFileDescriptor::ModeReadWrite;
  if (canRead) return VRELFileDescriptor::ModeRead;
  return canWrite ? VRELFileDescriptor::ModeWrite : VRELFileDescriptor::ModeFind;
}

int Open(VRELFilePath const& path, VRELFileDescriptor::IOMode mode) {
  // If the path does not fit, the buffer holds an empty string, and open fails.
  char bytes[VRELFilePath::maxByteCount];
  path.GetPath().convertToMBCS(bytes, VRELFilePath::maxByteCount, nullptr, false);
  bool const isWriting = mode == VRELFileDescriptor::ModeWrite || mode == VRELFileDescriptor::ModeReadWrite;
  return isWriting ? open(bytes, kWriteFlags, kWritePermissions) : open(bytes, O_RDONLY);
}

}  // namespace

VRELFileDescriptor::VRELFileDescriptor(int file, IOMode requestedMode)
    : descriptor(file), mode(requestedMode == ModeFind ? FindMode(file) : requestedMode), isOwned(false) {}

VRELFileDescriptor::VRELFileDescriptor(std::FILE* stream, IOMode requestedMode)
    : VRELFileDescriptor(stream != nullptr ? fileno(stream) : -1, requestedMode) {}

VRELFileDescriptor::VRELFileDescriptor(VRELFilePath const& path, IOMode requestedMode)
    : descriptor(Open(path, requestedMode)), mode(requestedMode), isOwned(true) {
  if (descriptor == -1) Gk_ErrMgr::raise(Gk_Exception("CANNOT_OPEN_FILE"));
}

VRELFileDescriptor::~VRELFileDescriptor() {
  if (isOwned) close(descriptor);
}

long VRELFileDescriptor::seek(long position) const {
  return lseek(descriptor, position, SEEK_SET);
}

long VRELFileDescriptor::offset(long delta) const {
  return lseek(descriptor, delta, SEEK_CUR);
}

long VRELFileDescriptor::fileSize() const {
  long const position = offset(0);
  long const size = lseek(descriptor, 0, SEEK_END);
  seek(position);
  return size;
}

long VRELFileDescriptor::readBytes(char* buffer, unsigned size, long position) {
  if (position != -1) seek(position);
  return read(descriptor, buffer, size);
}

long VRELFileDescriptor::writeBytes(char const* buffer, unsigned size, long position) {
  if (position != -1) seek(position);
  return write(descriptor, buffer, size);
}

void VRELFileDescriptor::commit() {}
