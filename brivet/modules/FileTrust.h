// Decides which files may be loaded as code.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

struct stat;

// Checks that only trusted users can change a file. Trusted are root, the owner of "/" (root as a user namespace shows
// it), this user, and the owner of the folder that the constructor names.
//
// A file or a folder that a group may write is accepted if all members of the group are trusted: on systems with a
// private group for each user, files are writable by that group by default. The group root is accepted, and the group
// that may write to the folder of the constructor. Members that the system does not list, as of a directory service
// without enumeration, are not found. Access control lists are not examined.
//
//   FileTrust const trust("/usr/lib");
//   struct stat status;
//   if (stat(path, &status) == 0 && trust.WhyUntrusted(status).empty()) Load(path);
//
// Thread safety: one thread at a time in the process, since the lists of users and groups have one iteration.
class FileTrust {
 public:
  explicit FileTrust(std::string trustedFolder);

  // Returns why a file or a folder is not trusted: "belongs to another user", "can be written by everybody", "can be
  // written by the group 'cad'"; empty if it is.
  std::string WhyUntrusted(struct stat const& status) const;

  // Returns why a folder above a path is not trusted: "the folder '/shared' can be written by everybody"; empty if all
  // are. In a folder with the sticky bit, such as /tmp, only the owner of a file can replace it, so that others may
  // write to it. The folder of the constructor and those above it are not examined.
  //
  // Requires: the path is absolute and without symbolic links.
  std::string WhyUntrustedAbove(std::string const& path) const;

 private:
  static constexpr gid_t kNoGroup = static_cast<gid_t>(-1);

  bool IsTrustedUser(uid_t user) const;
  bool IsTrustedGroup(gid_t group) const;

  std::string folder;
  std::vector<uid_t> users;
  gid_t folderGroup = kNoGroup;
};
