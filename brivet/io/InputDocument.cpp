#include "InputDocument.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

#include "Decompression.h"
#include "Descriptor.h"
#include "FileError.h"

namespace {

constexpr std::size_t kBlockSize = std::size_t{1} << 18U;
constexpr std::size_t kPrefix = 4096;  // bytes in which a STEP file begins
constexpr char kSpaceHint[] = "set TMPDIR to a folder with enough space";

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

// Returns the first bytes of a regular file, fewer if it is shorter or cannot be read.
std::string FirstBytes(int descriptor, std::size_t size) {
  std::string bytes(size, '\0');
  std::size_t done = 0;
  while (done < size) {
    ssize_t const count = pread(descriptor, bytes.data() + done, size - done, static_cast<off_t>(done));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    done += static_cast<std::size_t>(count);
  }
  bytes.resize(done);
  return bytes;
}

bool IsModified(struct stat const& before, struct stat const& now) {
  return before.st_size != now.st_size || before.st_mtim.tv_sec != now.st_mtim.tv_sec ||
         before.st_mtim.tv_nsec != now.st_mtim.tv_nsec;
}

[[noreturn]] void ThrowChanged(std::string const& name) {
  throw FileError{VREL_E_FILE_OPEN, "cannot read " + QuoteName(name) + ": file changed while it was read",
                  "translate it again when nothing writes to it"};
}

}  // namespace

InputDocument::InputDocument(std::string const& path, long spaceLimit)
    : name(path), file(OpenInput(path)), copy(-1, ""), status(file.Status()), limit(spaceLimit) {
  if (S_ISDIR(status.st_mode)) throw MakeFileError(VREL_E_FILE_OPEN, "read", path, EISDIR);
  size = static_cast<long>(status.st_size);
  if (IsUsable(path)) return;
  Copy();
  readable = "/proc/self/fd/" + std::to_string(copy.Descriptor());
}

// Returns whether the file itself can be read, and sets the path to do so.
bool InputDocument::IsUsable(std::string const& path) {
  if (!S_ISREG(status.st_mode) || lseek(file.Descriptor(), 0, SEEK_CUR) != 0) return false;
  if (DetectCompression(FirstBytes(file.Descriptor(), kSignatureSize)) != Compression::None) return false;
  readable = "/proc/self/fd/" + std::to_string(file.Descriptor());
  if (access(readable.c_str(), R_OK) == 0) return true;
  // Without a mounted /proc the file is opened again by its name.
  if (IsStandardInput(path) || access(readable.c_str(), F_OK) == 0) return false;
  readable = path;
  return true;
}

void InputDocument::Copy() {
  CreateCopy();
  size = 0;
  std::vector<char> block(kBlockSize);
  // A pipe may deliver single bytes.
  std::size_t first = 0;
  while (first < kSignatureSize) {
    std::size_t const count = file.Read(block.data() + first, block.size() - first);
    if (count == 0) break;
    first += count;
  }
  Compression const compression = DetectCompression({block.data(), first});
  if (compression == Compression::Gzip) {
    std::string_view rest(block.data(), first);
    damage = DecompressGzip(
        [&](char* target, std::size_t capacity) {
          if (rest.empty()) return file.Read(target, capacity);
          std::size_t const count = rest.copy(target, capacity);
          rest.remove_prefix(count);
          return count;
        },
        [this](std::string_view bytes) { Append(bytes); });
  } else {
    for (std::size_t count = first; count != 0; count = file.Read(block.data(), block.size())) {
      Append({block.data(), count});
    }
    if (compression == Compression::Zip) CopyZip();
  }
  if (!damage.empty() && size == 0) {
    throw FileError{VREL_E_INVALID_FILE, "cannot decompress " + QuoteName(name) + ": " + damage, ""};
  }
  if (S_ISREG(status.st_mode) && IsModified(status, file.Status())) ThrowChanged(name);
}

void InputDocument::CreateCopy() {
  folder = TemporaryFolder();
  copy = InputFile(CreateUnnamedFile(folder), folder);
  if (copy.Descriptor() < 0) FailToCopy(std::strerror(errno), kSpaceHint);
}

// Replaces the copied archive by its document.
void InputDocument::CopyZip() {
  InputFile const archive = std::move(copy);
  CreateCopy();
  size = 0;
  damage = DecompressZip(archive.Descriptor(), [this](std::string_view bytes) { Append(bytes); });
}

void InputDocument::Append(std::string_view bytes) {
  size += static_cast<long>(bytes.size());
  if (size > limit) {
    FailToCopy("it has more than " + std::to_string(limit) + " bytes", "-tempspace SIZE sets another limit");
  }
  if (!WriteAll(copy.Descriptor(), bytes)) FailToCopy(std::strerror(errno), kSpaceHint);
}

void InputDocument::FailToCopy(std::string const& reason, std::string const& hint) const {
  throw FileError{VREL_E_FILE_SAVE, "cannot copy the input to a temporary file in " + QuoteName(folder) + ": " + reason,
                  hint};
}

void InputDocument::CheckUnchanged() const {
  if (copy.Descriptor() >= 0) return;
  struct stat named;
  bool const isReplaced = !IsStandardInput(name) && stat(name.c_str(), &named) == 0 &&
                          (named.st_dev != status.st_dev || named.st_ino != status.st_ino);
  if (!isReplaced && !IsModified(status, file.Status())) return;
  ThrowChanged(name);
}

bool IsStepDocument(std::string const& path) {
  constexpr std::string_view kKeyword = "ISO-10303-21";
  struct stat status;
  // A pipe that is opened and closed again loses its writer.
  if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
  int const descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) return false;
  InputFile const opened(descriptor, path);
  if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return false;
  std::string text = FirstBytes(descriptor, kPrefix);
  switch (DetectCompression(text)) {
    case Compression::Zip:
      return true;
    case Compression::Gzip: {
      std::string_view rest = text;
      std::string plain;
      DecompressGzip(
          [&rest](char* target, std::size_t capacity) {
            std::size_t const copied = rest.copy(target, capacity);
            rest.remove_prefix(copied);
            return copied;
          },
          [&plain](std::string_view bytes) { plain += bytes.substr(0, kPrefix - std::min(kPrefix, plain.size())); });
      text = plain;
      break;
    }
    case Compression::None:
      break;
  }
  std::size_t const keyword = text.find(kKeyword);
  // White space, comments and a byte order mark may precede it, but no other keyword.
  return keyword != text.npos && text.substr(0, keyword).find(';') == text.npos;
}
