#include "FileIdentity.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "PathNames.h"

namespace {

constexpr int kLinkLimit = 40;

}  // namespace

FileIdentity FileIdentity::OfInput(std::string const& path) {
  return FileIdentity(path, STDIN_FILENO);
}

FileIdentity FileIdentity::OfOutput(std::string const& path) {
  return FileIdentity(path, STDOUT_FILENO);
}

FileIdentity::FileIdentity(std::string const& path, int standardStream) {
  struct stat status;
  bool const isStream = path == "-";
  if ((isStream ? fstat(standardStream, &status) : stat(path.c_str(), &status)) == 0) {
    isKnown = S_ISREG(status.st_mode);
  } else if (!isStream && errno == ENOENT) {
    std::string const target = ResolveLinks(path);
    std::string const folder(FolderOf(target));
    name = BaseNameOf(target);
    isKnown = !name.empty() && stat(folder.empty() ? "." : folder.c_str(), &status) == 0;
  }
  if (!isKnown) return;
  device = status.st_dev;
  node = status.st_ino;
}

std::string ResolveLinks(std::string const& path) {
  std::string resolved = path;
  for (int i = 0; i < kLinkLimit; ++i) {
    std::error_code error;
    std::string const next = std::filesystem::read_symlink(resolved, error).string();
    if (error) return resolved;
    resolved.resize(next.rfind('/', 0) == 0 ? 0 : FolderOf(resolved).size());
    resolved += next;
  }
  return "";
}
