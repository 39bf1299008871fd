#include "VRELTemporaryFile.h"

#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <string>

#include "VRELString.h"
#include "VRELStringConversions.h"

namespace {

// The two names with a separator must leave room for a terminator in the bytes that a path takes.
constexpr int maximumLength = VRELFilePath::maxByteCount - 1;
constexpr int fallbackCount = 25;
// Of some 57,000 million names one that is taken is rare, two in a row are none of chance.
constexpr int drawCount = 16;
constexpr int letterCount = 6;
constexpr char letters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";

// A path as tmpnam makes it, but drawn from the system's random numbers, so that nobody can tell it in advance. Empty
// where there is no directory or no chance.
std::string DrawName() {
  struct stat stats;
  if (stat(P_tmpdir, &stats) != 0 || !S_ISDIR(stats.st_mode)) return std::string();
  std::uint64_t number = 0;
  if (getrandom(&number, sizeof number, 0) != static_cast<ssize_t>(sizeof number)) return std::string();
  std::string name = P_tmpdir "/file";
  for (int i = 0; i < letterCount; ++i) {
    name += letters[number % (sizeof letters - 1)];
    number /= sizeof letters - 1;
  }
  return name;
}

VRELString WithTail(VRELString const& start, VRELString const& tail) {
  if (start.length() + tail.length() >= maximumLength) return start;
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

// A plain file under one name: no link that leads elsewhere, nothing that another user can exchange.
bool IsFileOfUser(VRELFilePath const& path) {
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
  for (int draw = 0; draw < drawCount; ++draw) {
    VRELString result(DrawName().c_str(), nullptr);
    if (source.IsValid()) result = WithTail(result, source.GetName());
    if (name != nullptr) {
      VRELString tail = VRELFilePath(name).GetName();
      if (number != 0) tail = tail + VRELString(L"_") + VRELStringFromInteger(static_cast<int>(number));
      result = WithTail(result, tail);
    }
    path = VRELFilePath(result);
    if (!IsTaken(path)) break;
  }
  for (int i = 1; i <= fallbackCount && !path.IsValid(); ++i) {
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

// A mode that makes a file must make it itself, which the flag x says, or find one that nobody else can have put there.
std::FILE* VRELTemporaryFile::OpenAs(char const* mode) const {
  if (mode[0] == 'w' || mode[0] == 'a') {
    std::FILE* const made = path.OpenFile((std::string(mode, 1) + "x" + (mode + 1)).c_str());
    if (made != nullptr) return made;
  }
  return IsFileOfUser(path) ? path.OpenFile(mode) : nullptr;
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
