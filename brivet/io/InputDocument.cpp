#include "InputDocument.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "Descriptor.h"
#include "InputError.h"

namespace {

constexpr std::size_t BLOCK = std::size_t{1} << 18U;

InputFile OpenInput(std::string const& path) {
  return path == "-" || path == "/dev/stdin" ? InputFile(dup(STDIN_FILENO)) : InputFile(path);
}

// A file that nothing names.
int MakeUnnamedFile(std::string const& folder) {
  int const unnamed = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (unnamed >= 0) return unnamed;
  std::string name = folder + "/brivet-XXXXXX";
  int const named = mkostemp(name.data(), O_CLOEXEC);
  if (named >= 0) unlink(name.c_str());
  return named;
}

std::string TemporaryFolder() {
  char const* const folder = std::getenv("TMPDIR");
  return folder != nullptr && *folder != '\0' ? folder : "/tmp";
}

[[noreturn]] void FailToCopy(std::string const& folder) {
  int const error = errno;
  throw InputError{VREL_E_FILE_SAVE, 0,
                   "expected room in " + folder + " for a copy of what has no length, found: " + std::strerror(error) +
                       "; name a folder with more room in TMPDIR"};
}

}  // namespace

InputDocument::InputDocument(std::string const& path) : file(OpenInput(path)), copy(-1) {
  struct stat const status = file.Status();
  if (S_ISDIR(status.st_mode)) InputFile::Fail(EISDIR);
  size = static_cast<long>(status.st_size);
  bool const isWhole = S_ISREG(status.st_mode) && lseek(file.Descriptor(), 0, SEEK_CUR) == 0;
  if (!isWhole) Spool();
  readable = "/proc/self/fd/" + std::to_string(isWhole ? file.Descriptor() : copy.Descriptor());
  // Without the file system of processes the name must do.
  if (isWhole && access(readable.c_str(), F_OK) != 0) readable = path;
}

void InputDocument::Spool() {
  std::string const folder = TemporaryFolder();
  copy = InputFile(MakeUnnamedFile(folder));
  if (copy.Descriptor() < 0) FailToCopy(folder);
  std::vector<char> block(BLOCK);
  size = 0;
  while (std::size_t const count = file.Read(block.data(), block.size())) {
    if (!WriteAll(copy.Descriptor(), {block.data(), count})) FailToCopy(folder);
    size += static_cast<long>(count);
  }
}
