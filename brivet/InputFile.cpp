#include "InputFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "StepError.h"

namespace {

[[noreturn]] void Fail(long code, int error) {
  throw StepError{code, 0, std::string("expected a file that can be read, found: ") + std::strerror(error)};
}

}  // namespace

InputFile::InputFile(std::string const& path) : descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY)) {
  if (descriptor >= 0) return;
  bool const missing = errno == ENOENT || errno == ENOTDIR;
  Fail(missing ? VREL_E_FILE_NOT_FOUND : VREL_E_FILE_OPEN, errno);
}

InputFile::~InputFile() {
  close(descriptor);
}

std::size_t InputFile::Read(char* block, std::size_t size) {
  ssize_t count = -1;
  do {
    count = read(descriptor, block, size);
  } while (count < 0 && errno == EINTR);
  if (count < 0) Fail(VREL_E_FILE_OPEN, errno);
  return static_cast<std::size_t>(count);
}
