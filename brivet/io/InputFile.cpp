#include "InputFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "Descriptor.h"
#include "Gk_ErrMgr.h"
#include "InputError.h"

namespace {

// A pipe without a writer waits for one.
int Open(std::string const& path) {
  int descriptor = -1;
  do {
    Gk_ErrMgr::checkAbort();
    descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
  } while (descriptor < 0 && errno == EINTR);
  return descriptor;
}

}  // namespace

void InputFile::Fail(int error) {
  bool const missing = error == ENOENT || error == ENOTDIR;
  throw InputError{missing ? VREL_E_FILE_NOT_FOUND : VREL_E_FILE_OPEN, 0,
                   std::string("expected a file that can be read, found: ") + std::strerror(error) +
                       (missing ? "; check the name" : "; check what stands there, and whether you may read it")};
}

InputFile::InputFile(std::string const& path) : descriptor(Open(path)) {
  if (descriptor < 0) Fail(errno);
}

InputFile::~InputFile() {
  if (descriptor >= 0) close(descriptor);
}

InputFile::InputFile(InputFile&& other) noexcept : descriptor(std::exchange(other.descriptor, -1)) {}

InputFile& InputFile::operator=(InputFile&& other) noexcept {
  std::swap(descriptor, other.descriptor);
  return *this;
}

std::size_t InputFile::Read(char* block, std::size_t size) {
  ssize_t count = -1;
  do {
    WaitToRead(descriptor);
    count = read(descriptor, block, size);
  } while (count < 0 && (errno == EINTR || errno == EAGAIN));
  if (count < 0) Fail(errno);
  return static_cast<std::size_t>(count);
}

struct stat InputFile::Status() const {
  struct stat status;
  if (fstat(descriptor, &status) != 0) Fail(errno);
  return status;
}
