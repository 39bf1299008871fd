#include "InputFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "Descriptor.h"
#include "FileError.h"
#include "Gk_ErrMgr.h"

namespace {

// Opening a pipe without a writer waits for one.
int Open(std::string const& path) {
  int descriptor = -1;
  do {
    Gk_ErrMgr::checkAbort();
    descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
  } while (descriptor < 0 && errno == EINTR);
  return descriptor;
}

}  // namespace

InputFile::InputFile(std::string const& path) : descriptor(Open(path)), name(path) {
  if (descriptor >= 0) return;
  bool const isMissing = errno == ENOENT || errno == ENOTDIR;
  throw MakeFileError(isMissing ? VREL_E_FILE_NOT_FOUND : VREL_E_FILE_OPEN, "open", path, errno);
}

InputFile::~InputFile() {
  if (descriptor >= 0) close(descriptor);
}

InputFile::InputFile(InputFile&& other) noexcept
    : descriptor(std::exchange(other.descriptor, -1)), name(std::move(other.name)) {}

InputFile& InputFile::operator=(InputFile&& other) noexcept {
  std::swap(descriptor, other.descriptor);
  std::swap(name, other.name);
  return *this;
}

std::size_t InputFile::Read(char* block, std::size_t size) {
  ssize_t count = -1;
  do {
    WaitToRead(descriptor);
    count = read(descriptor, block, size);
  } while (count < 0 && (errno == EINTR || errno == EAGAIN));
  if (count < 0) throw MakeFileError(VREL_E_FILE_OPEN, "read", name, errno);
  return static_cast<std::size_t>(count);
}

struct stat InputFile::Status() const {
  struct stat status;
  if (fstat(descriptor, &status) != 0) throw MakeFileError(VREL_E_FILE_OPEN, "read", name, errno);
  return status;
}
