#include "OutputFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "Descriptor.h"
#include "Gk_ErrMgr.h"
#include "InputError.h"

namespace {

constexpr std::size_t BUFFER = std::size_t{1} << 18U;
constexpr int LINK_LIMIT = 40;
constexpr int NAME_LIMIT = 1000;

[[noreturn]] void Refuse(std::string const& found, char const* advice) {
  throw InputError{VREL_E_FILE_SAVE, 0, "expected a place to write to, found: " + found + "; " + advice};
}

[[noreturn]] void Refuse(int error) {
  Refuse(std::strerror(error), "name another OUTPUT");
}

bool AreSame(struct stat const& a, struct stat const& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

std::string FolderOf(std::string const& path) {
  return path.substr(0, path.rfind('/') + 1);
}

// The name behind symbolic links; it need not exist.
std::string Follow(std::string path) {
  for (int i = 0; i < LINK_LIMIT; ++i) {
    std::error_code error;
    std::string const next = std::filesystem::read_symlink(path, error).string();
    if (error) return path;
    path = next.rfind('/', 0) == 0 ? "" : FolderOf(path);
    path += next;
  }
  Refuse(ELOOP);
}

[[noreturn]] void FailHalfway(int error) {
  throw InputError{VREL_E_FILE_SAVE, 0,
                   std::string("expected a place that takes all of the output, found: ") + std::strerror(error) +
                       "; make room, or name another OUTPUT"};
}

std::string NameOf(int descriptor) {
  return "/proc/self/fd/" + std::to_string(descriptor);
}

}  // namespace

OutputFile::OutputFile(std::string const& place, struct stat const& input) {
  buffer.reserve(BUFFER);
  struct stat status;
  struct stat output;
  bool const toStandardOutput = place == "-";
  bool const exists = toStandardOutput ? fstat(STDOUT_FILENO, &status) == 0 : stat(place.c_str(), &status) == 0;
  if (!exists && (toStandardOutput || errno != ENOENT || place.empty())) Refuse(errno);
  if (exists && S_ISREG(status.st_mode) && AreSame(status, input)) {
    Refuse("the input itself", "name another OUTPUT");
  }
  isStandardOutput = toStandardOutput || (exists && fstat(STDOUT_FILENO, &output) == 0 && AreSame(status, output));
  isDirect = isStandardOutput || (exists && !S_ISREG(status.st_mode));
  if (isDirect) {
    OpenDirectly(place);
    return;
  }
  target = Follow(place);
  folder = FolderOf(target);
  if (target.empty() || target.back() == '/') Refuse(EISDIR);
  // A rename asks for leave to change the folder alone.
  if (exists && access(target.c_str(), W_OK) != 0) Refuse(errno);
  OpenBeside();
}

OutputFile::~OutputFile() {
  if (descriptor >= 0) ::close(descriptor);
  RemoveNamed();
}

void OutputFile::OpenDirectly(std::string const& place) {
  do {
    Gk_ErrMgr::checkAbort();
    descriptor = isStandardOutput ? dup(STDOUT_FILENO) : open(place.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
  } while (descriptor < 0 && errno == EINTR);
  if (descriptor < 0) Refuse(errno);
}

void OutputFile::OpenBeside() {
  descriptor = open(folder.empty() ? "." : folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
  // Not every file system knows files without a name, and such a file needs a name of the process for its own.
  if (descriptor >= 0 && access(NameOf(descriptor).c_str(), F_OK) == 0) return;
  if (descriptor >= 0) ::close(descriptor);
  if (!MakeNamed()) Refuse(errno);
}

// Tries names until one is free.
bool OutputFile::MakeNamed() {
  for (int i = 0; i < NAME_LIMIT; ++i) {
    temporary = folder + ".brivet-" + std::to_string(getpid()) + "-" + std::to_string(i);
    descriptor = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor >= 0) return true;
    if (errno != EEXIST) break;
  }
  temporary.clear();
  return false;
}

int OutputFile::write(char const* bytes, int count) {
  if (buffer.size() + static_cast<std::size_t>(count) > BUFFER) flush();
  if (writeError != 0) return -1;
  std::string_view const given(bytes, static_cast<std::size_t>(count));
  if (given.size() < BUFFER) {
    buffer += given;
  } else if (!WriteAll(descriptor, given)) {
    writeError = errno;
    return -1;
  }
  return count;
}

void OutputFile::flush() {
  if (writeError == 0 && !WriteAll(descriptor, buffer)) writeError = errno;
  buffer.clear();
}

void OutputFile::Check() const {
  if (writeError != 0) FailHalfway(writeError);
}

void OutputFile::Commit() {
  flush();
  // A file system may tell of a full disk only when the file is closed.
  int const twin = writeError == 0 ? dup(descriptor) : -1;
  if (twin >= 0 && ::close(twin) != 0) writeError = errno;
  Check();
  if (isDirect) return;
  Gk_ErrMgr::checkAbort();
  GiveName();
}

void OutputFile::GiveName() {
  for (int i = 0; temporary.empty(); ++i) {
    std::string const name = folder + ".brivet-" + std::to_string(getpid()) + "-" + std::to_string(i);
    int const linked = linkat(AT_FDCWD, NameOf(descriptor).c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW);
    if (linked == 0) {
      temporary = name;
    } else if (errno != EEXIST || i == NAME_LIMIT) {
      FailHalfway(errno);
    }
  }
  if (rename(temporary.c_str(), target.c_str()) != 0) FailHalfway(errno);
  temporary.clear();
}

void OutputFile::RemoveNamed() noexcept {
  if (!temporary.empty()) unlink(temporary.c_str());
}
