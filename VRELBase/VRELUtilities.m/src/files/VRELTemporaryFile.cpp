#include "VRELTemporaryFile.h"

#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <string>

#include "VRELString.h"
#include "VRELStringConversions.h"

namespace {

// Limit of the length of the path and the appended part together, without the separator.
constexpr int kMaximumLength = VRELFilePath::maxByteCount - 1;
constexpr int kFallbackCount = 25;
// Attempts to find a free name. There are 62^6 names, so a second attempt is hardly ever needed.
constexpr int kAttemptCount = 16;
constexpr int kLetterCount = 6;
constexpr char kLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";

// Returns a path in the form of tmpnam, with letters from the random numbers of the kernel, so that it cannot be
// predicted. Returns an empty string without a temporary directory or without random numbers.
std::string RandomName() {
  struct stat stats;
  if (stat(P_tmpdir, &stats) != 0 || !S_ISDIR(stats.st_mode)) return std::string();
  std::uint64_t number = 0;
  if (getrandom(&number, sizeof number, 0) != static_cast<ssize_t>(sizeof number)) return std::string();
  std::string name = P_tmpdir "/file";
  for (int i = 0; i < kLetterCount; ++i) {
    name += kLetters[number % (sizeof kLetters - 1)];
    number /= sizeof kLetters - 1;
  }
  return name;
}

VRELString Append(VRELString const& start, VRELString const& tail) {
  if (start.length() + tail.length() >= kMaximumLength) return start;
  return start + VRELString(L"_") + tail;
}

bool GetStatus(VRELFilePath const& path, struct stat& stats) {
  char bytes[VRELFilePath::maxByteCount];
  return path.GetMBCSBuffer(bytes, sizeof bytes).IsSuccess() && lstat(bytes, &stats) == 0;
}

bool IsTaken(VRELFilePath const& path) {
  struct stat stats;
  return GetStatus(path, stats);
}

// Returns whether the path is a regular file of this user with one link, and so neither a symbolic link nor a hard link
// to a file elsewhere.
bool IsOwnRegularFile(VRELFilePath const& path) {
  struct stat stats;
  return GetStatus(path, stats) && S_ISREG(stats.st_mode) && stats.st_nlink == 1 && stats.st_uid == geteuid();
}

}  // namespace

VRELTemporaryFile::VRELTemporaryFile() {
  InitializeName(VRELFilePath(), nullptr, 0);
}

VRELTemporaryFile::VRELTemporaryFile(VRELFilePath const& source, char const* name, unsigned int number) {
  InitializeName(source, name, number);
}

VRELTemporaryFile::~VRELTemporaryFile() {
  VRELTemporaryFile::Terminate();
}

void VRELTemporaryFile::InitializeName(VRELFilePath const& source, char const* name, unsigned int number) {
  for (int attempt = 0; attempt < kAttemptCount; ++attempt) {
    VRELString result(RandomName().c_str(), nullptr);
    if (source.IsValid()) result = Append(result, source.GetName());
    if (name != nullptr) {
      VRELString tail = VRELFilePath(name).GetName();
      if (number != 0) tail = tail + VRELString(L"_") + VRELStringFromInteger(static_cast<int>(number));
      result = Append(result, tail);
    }
    path = VRELFilePath(result);
    if (!IsTaken(path)) break;
  }
  for (int i = 1; i <= kFallbackCount && !path.IsValid(); ++i) {
    path = VRELFilePath(VRELString(L"VRELTemp_") + VRELStringFromInteger(i));
  }
}

void VRELTemporaryFile::GetPath(VRELFilePath& out) const {
  out = path;
}

std::FILE* VRELTemporaryFile::Open(char const* mode) {
  if (stream == nullptr) stream = OpenAs(mode != nullptr ? mode : "w+b");
  return stream;
}

// Modes that create a file create it exclusively (flag x). A file that exists is opened only if it is the user's own.
std::FILE* VRELTemporaryFile::OpenAs(char const* mode) const {
  if (mode[0] == 'w' || mode[0] == 'a') {
    std::FILE* const made = path.OpenFile((std::string(mode, 1) + "x" + (mode + 1)).c_str());
    if (made != nullptr) return made;
  }
  return IsOwnRegularFile(path) ? path.OpenFile(mode) : nullptr;
}

void VRELTemporaryFile::Close() {
  if (stream != nullptr) std::fclose(stream);
  stream = nullptr;
}

int VRELTemporaryFile::Remove() {
  if (!path.IsValid()) return 0;
  return path.RemoveFile() ? 0 : -1;
}

void VRELTemporaryFile::Terminate() {
  Close();
  Remove();
  path = VRELFilePath();
}
