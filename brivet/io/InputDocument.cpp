#include "InputDocument.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "Descriptor.h"
#include "FileError.h"

namespace {

constexpr std::size_t kBlockSize = std::size_t{1} << 18U;

bool IsStandardInput(std::string const& path) {
  return path == "-" || path == "/dev/stdin";
}

InputFile OpenInput(std::string const& path) {
  return IsStandardInput(path) ? InputFile(dup(STDIN_FILENO), "standard input") : InputFile(path);
}

int CreateUnnamedFile(std::string const& folder) {
  int const unnamed = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (unnamed >= 0) return unnamed;
  // Not every file system supports O_TMPFILE.
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
  throw FileError{VREL_E_FILE_SAVE,
                  "cannot copy the input to a temporary file in " + QuoteName(folder) + ": " + std::strerror(error),
                  "set TMPDIR to a folder with enough space"};
}

bool IsModified(struct stat const& before, struct stat const& now) {
  return before.st_size != now.st_size || before.st_mtim.tv_sec != now.st_mtim.tv_sec ||
         before.st_mtim.tv_nsec != now.st_mtim.tv_nsec;
}

}  // namespace

InputDocument::InputDocument(std::string const& path)
    : name(path), file(OpenInput(path)), copy(-1, ""), status(file.Status()) {
  if (S_ISDIR(status.st_mode)) throw MakeFileError(VREL_E_FILE_OPEN, "read", path, EISDIR);
  size = static_cast<long>(status.st_size);
  bool const isWhole = S_ISREG(status.st_mode) && lseek(file.Descriptor(), 0, SEEK_CUR) == 0;
  readable = "/proc/self/fd/" + std::to_string(file.Descriptor());
  if (isWhole && access(readable.c_str(), R_OK) == 0) return;
  // Without a mounted /proc the name must do.
  if (isWhole && !IsStandardInput(path) && access(readable.c_str(), F_OK) != 0) {
    readable = path;
    return;
  }
  Spool();
  readable = "/proc/self/fd/" + std::to_string(copy.Descriptor());
}

void InputDocument::Spool() {
  std::string const folder = TemporaryFolder();
  copy = InputFile(CreateUnnamedFile(folder), folder);
  if (copy.Descriptor() < 0) FailToCopy(folder);
  std::vector<char> block(kBlockSize);
  size = 0;
  while (std::size_t const count = file.Read(block.data(), block.size())) {
    if (!WriteAll(copy.Descriptor(), {block.data(), count})) FailToCopy(folder);
    size += static_cast<long>(count);
  }
}

void InputDocument::CheckUnchanged() const {
  if (copy.Descriptor() >= 0) return;
  struct stat named;
  bool const isReplaced = !IsStandardInput(name) && stat(name.c_str(), &named) == 0 &&
                          (named.st_dev != status.st_dev || named.st_ino != status.st_ino);
  if (!isReplaced && !IsModified(status, file.Status())) return;
  throw FileError{VREL_E_FILE_OPEN, "cannot read " + QuoteName(name) + ": file changed while it was read",
                  "translate it again when nothing writes to it"};
}
