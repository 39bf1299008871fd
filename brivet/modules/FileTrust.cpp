#include "FileTrust.h"

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "FileError.h"

namespace {

std::string NameOfGroup(gid_t group) {
  struct group const* const entry = getgrgid(group);
  return QuoteName(entry != nullptr ? entry->gr_name : std::to_string(group));
}

// Returns the folders above a path, the nearest first: "/a/b" and "/a" and "/" of "/a/b/c".
std::vector<std::string> FoldersAbove(std::string path) {
  std::vector<std::string> folders;
  while (path.size() > 1) {
    path.resize(std::max<std::size_t>(path.rfind('/'), 1));
    folders.push_back(path);
  }
  return folders;
}

}  // namespace

FileTrust::FileTrust(std::string trustedFolder) : folder(std::move(trustedFolder)), users({0, geteuid()}) {
  struct stat status;
  if (stat("/", &status) == 0) users.push_back(status.st_uid);
  if (stat(folder.c_str(), &status) != 0) return;
  users.push_back(status.st_uid);
  if ((status.st_mode & S_IWGRP) != 0) folderGroup = status.st_gid;
}

bool FileTrust::IsTrustedUser(uid_t user) const {
  return std::find(users.begin(), users.end(), user) != users.end();
}

// Returns whether all members are trusted users. A user can be a member by the entry of the user or of the group.
bool FileTrust::IsTrustedGroup(gid_t group) const {
  if (group == 0 || group == folderGroup) return true;
  struct group const* const entry = getgrgid(group);
  if (entry == nullptr) return false;
  for (char* const* member = entry->gr_mem; *member != nullptr; ++member) {
    struct passwd const* const user = getpwnam(*member);
    if (user != nullptr && !IsTrustedUser(user->pw_uid)) return false;
  }
  bool isTrusted = true;
  setpwent();
  while (struct passwd const* const user = getpwent()) {
    isTrusted = isTrusted && (user->pw_gid != group || IsTrustedUser(user->pw_uid));
  }
  endpwent();
  return isTrusted;
}

std::string FileTrust::WhyUntrusted(struct stat const& status) const {
  if (!IsTrustedUser(status.st_uid)) return "belongs to another user";
  if ((status.st_mode & S_IWOTH) != 0) return "can be written by everybody";
  if ((status.st_mode & S_IWGRP) == 0 || IsTrustedGroup(status.st_gid)) return "";
  return "can be written by the group " + NameOfGroup(status.st_gid);
}

std::string FileTrust::WhyUntrustedAbove(std::string const& path) const {
  for (std::string const& each : FoldersAbove(path)) {
    bool const isAboveOwn = folder.compare(0, each.size(), each) == 0 &&
                            (folder.size() == each.size() || folder[each.size()] == '/' || each == "/");
    struct stat status;
    if (isAboveOwn) continue;
    if (stat(each.c_str(), &status) != 0) {
      return "the folder " + QuoteName(each) + " cannot be examined: " + std::strerror(errno);
    }
    if ((status.st_mode & S_ISVTX) != 0) status.st_mode &= ~static_cast<mode_t>(S_IWGRP | S_IWOTH);
    std::string const reason = WhyUntrusted(status);
    if (!reason.empty()) return "the folder " + QuoteName(each) + " " + reason;
  }
  return "";
}
