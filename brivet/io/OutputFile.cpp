#include "OutputFile.h"

#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>

#include <cerrno>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "Descriptor.h"
#include "FileIdentity.h"
#include "Gk_ErrMgr.h"
#include "PathNames.h"

namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 18U;
constexpr int kNameAttempts = 100;
constexpr mode_t kGroupBits = 070;
constexpr mode_t kSetIdBits = 06000;

bool AreSame(struct stat const& a, struct stat const& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// Returns an unpredictable name, so that no other process creates the file first; empty, with errno, on failure.
std::string RandomName(std::string const& folder) {
  std::uint64_t number = 0;
  if (getrandom(&number, sizeof number, 0) != static_cast<ssize_t>(sizeof number)) return "";
  char name[32];
  std::snprintf(name, sizeof name, ".brivet-%016" PRIx64, number);
  return folder + name;
}

std::string DescriptorPath(int descriptor) {
  return "/proc/self/fd/" + std::to_string(descriptor);
}

}  // namespace

FileError MakeOutputError(std::string const& path, std::string const& reason) {
  std::string const target = path == "-" ? "to standard output" : QuoteName(path);
  return {VREL_E_FILE_SAVE, "cannot write " + target + ": " + reason, ""};
}

OutputFile::OutputFile(std::string const& path, struct stat const& input, Durability durability)
    : shownName(path), isSynchronized(durability == Synchronized) {
  buffer.reserve(kBufferSize);
  struct stat existing;
  struct stat standardOutput;
  bool const toStandardOutput = path == "-";
  bool const exists = toStandardOutput ? fstat(STDOUT_FILENO, &existing) == 0 : stat(path.c_str(), &existing) == 0;
  if (!exists && (toStandardOutput || errno != ENOENT || path.empty())) Fail(errno);
  if (exists && S_ISREG(existing.st_mode) && AreSame(existing, input))
    throw MakeOutputError(path, "it is the input file");
  isStandardOutput =
      toStandardOutput || (exists && fstat(STDOUT_FILENO, &standardOutput) == 0 && AreSame(existing, standardOutput));
  isDirect = isStandardOutput || (exists && !S_ISREG(existing.st_mode));
  if (isDirect) {
    OpenDirectly();
    return;
  }
  target = ResolveLinks(path);
  if (target.empty()) Fail(ELOOP);
  folder = FolderOf(target);
  if (target.back() == '/') Fail(EISDIR);
  // rename needs write permission for the folder only; a file that may not be written is not replaced either.
  if (exists && access(target.c_str(), W_OK) != 0) Fail(errno);
  isReplacement = exists;
  OpenTemporary();
  if (exists) KeepAttributes(existing);
}

OutputFile::~OutputFile() {
  if (descriptor >= 0) ::close(descriptor);
  if (!temporary.empty()) unlink(temporary.c_str());
}

void OutputFile::Fail(int error) const {
  throw MakeOutputError(isStandardOutput ? "-" : shownName, std::strerror(error));
}

void OutputFile::OpenDirectly() {
  do {
    Gk_ErrMgr::checkAbort();
    descriptor = isStandardOutput ? dup(STDOUT_FILENO) : open(shownName.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
  } while (descriptor < 0 && errno == EINTR);
  if (descriptor < 0) Fail(errno);
}

void OutputFile::OpenTemporary() {
  mode_t const mode = isReplacement ? 0600 : 0666;
  descriptor = open(folder.empty() ? "." : folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode);
  // linkat needs a path of the unnamed file, which only a mounted /proc has.
  if (descriptor >= 0 && access(DescriptorPath(descriptor).c_str(), F_OK) == 0) return;
  if (descriptor >= 0) ::close(descriptor);
  CreateTemporary();
}

void OutputFile::CreateTemporary() {
  mode_t const mode = isReplacement ? 0600 : 0666;
  for (int i = 0; i < kNameAttempts; ++i) {
    temporary = RandomName(folder);
    if (temporary.empty()) break;
    descriptor = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (descriptor >= 0) return;
    if (errno != EEXIST) break;
  }
  int const error = errno;
  temporary.clear();
  Fail(error);
}

// A group that this user may not set gets no more access than everybody, and set-id bits only go with their owner.
void OutputFile::KeepAttributes(struct stat const& replaced) {
  mode_t mode = replaced.st_mode & 07777U;
  bool isOwnerKept = fchown(descriptor, replaced.st_uid, replaced.st_gid) == 0;
  if (!isOwnerKept) {
    bool const isGroupKept = fchown(descriptor, static_cast<uid_t>(-1), replaced.st_gid) == 0;
    if (!isGroupKept) mode = (mode & ~kGroupBits) | ((mode & (mode << 3U)) & kGroupBits);
    mode &= ~kSetIdBits;
  }
  // A file system without permissions refuses this; it has none to keep.
  if (fchmod(descriptor, mode) != 0) return;
}

int OutputFile::write(char const* bytes, int count) {
  if (count < 0) return -1;
  if (buffer.size() + static_cast<std::size_t>(count) > kBufferSize) flush();
  if (writeError != 0) return -1;
  std::string_view const given(bytes, static_cast<std::size_t>(count));
  if (given.size() < kBufferSize) {
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
  if (writeError != 0) Fail(writeError);
}

void OutputFile::Commit() {
  flush();
  // A network file system may report a full disk only when a descriptor of the file is closed.
  int const duplicate = writeError == 0 ? dup(descriptor) : -1;
  if (duplicate >= 0 && ::close(duplicate) != 0) writeError = errno;
  Check();
  if (!isDirect) {
    if (isSynchronized) Synchronize();
    Gk_ErrMgr::checkAbort();
    if (temporary.empty()) LinkTemporary();
    RenameIntoPlace();
  }
  isCommitted = true;
}

void OutputFile::Synchronize() {
  // EINVAL and ENOSYS: the file system cannot synchronize files.
  if (fsync(descriptor) != 0 && errno != EINVAL && errno != ENOSYS) Fail(errno);
}

void OutputFile::LinkTemporary() {
  for (int i = 0; i < kNameAttempts; ++i) {
    std::string name = RandomName(folder);
    if (name.empty()) break;
    if (linkat(AT_FDCWD, DescriptorPath(descriptor).c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
      temporary = std::move(name);
      return;
    }
    if (errno != EEXIST) break;
  }
  Fail(errno);
}

void OutputFile::RenameIntoPlace() {
  int const opened =
      isSynchronized ? open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC) : -1;
  int const error = rename(temporary.c_str(), target.c_str()) == 0 ? 0 : errno;
  // Without this a crash may bring the old file back; it is complete as well, so that a failure is no error.
  if (opened >= 0 && error == 0) fsync(opened);
  if (opened >= 0) ::close(opened);
  if (error != 0) Fail(error);
  temporary.clear();
}
