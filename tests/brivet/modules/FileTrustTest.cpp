#include "FileTrust.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <set>

#include "ScratchDirectory.h"

namespace {

constexpr unsigned kNobodysId = 1234567890;

struct stat Status(unsigned user, unsigned group, unsigned mode) {
  struct stat status = {};
  status.st_uid = user;
  status.st_gid = group;
  status.st_mode = S_IFREG | mode;
  return status;
}

}  // namespace

TEST(FileTrustTest, ExaminesOwnerAndMode) {
  FileTrust const trust("/nonexistent");
  EXPECT_EQ(trust.WhyUntrusted(Status(geteuid(), kNobodysId, 0644)), "");
  EXPECT_EQ(trust.WhyUntrusted(Status(0, kNobodysId, 0755)), "");
  EXPECT_EQ(trust.WhyUntrusted(Status(kNobodysId, 0, 0600)), "belongs to another user");
  EXPECT_EQ(trust.WhyUntrusted(Status(0, 0, 0646)), "can be written by everybody");
}

TEST(FileTrustTest, ExaminesMembersOfGroup) {
  FileTrust const trust("/nonexistent");
  EXPECT_EQ(trust.WhyUntrusted(Status(0, 0, 0664)), "");
  EXPECT_EQ(trust.WhyUntrusted(Status(0, kNobodysId, 0664)), "can be written by the group '1234567890'");
  // Groups of which another user is a member by the list of users, and groups without members.
  std::set<gid_t> primary;
  setpwent();
  while (passwd const* const user = getpwent()) {
    if (user->pw_uid != 0 && user->pw_uid != geteuid()) primary.insert(user->pw_gid);
  }
  endpwent();
  int found = 0;
  std::set<gid_t> empty;
  setgrent();
  while (struct group const* const entry = getgrent()) {
    if (entry->gr_gid != 0 && *entry->gr_mem == nullptr && primary.count(entry->gr_gid) == 0) {
      empty.insert(entry->gr_gid);
    }
  }
  endgrent();
  for (gid_t const group : primary) {
    if (group == 0 || getgrgid(group) == nullptr) continue;
    ++found;
    EXPECT_EQ(trust.WhyUntrusted(Status(0, group, 0664)),
              std::string("can be written by the group '") + getgrgid(group)->gr_name + "'");
    EXPECT_EQ(trust.WhyUntrusted(Status(0, group, 0644)), "");
  }
  for (gid_t const group : empty) EXPECT_EQ(trust.WhyUntrusted(Status(0, group, 0664)), "") << group;
  if (found == 0) GTEST_SKIP() << "no other user is listed";
}

TEST(FileTrustTest, TrustsPrivateGroupOfUser) {
  passwd const* const daemon = getpwnam("daemon");
  if (geteuid() != 0 || daemon == nullptr) GTEST_SKIP() << "needs root and the user daemon";
  uid_t const user = daemon->pw_uid;
  gid_t const group = daemon->pw_gid;
  ASSERT_EQ(seteuid(user), 0);
  std::string const own = FileTrust("/nonexistent").WhyUntrusted(Status(user, group, 0664));
  ASSERT_EQ(seteuid(0), 0);
  EXPECT_EQ(own, "");
  EXPECT_EQ(FileTrust("/nonexistent").WhyUntrusted(Status(0, group, 0664)), "can be written by the group 'daemon'");
}

TEST(FileTrustTest, TrustsGroupThatMayWriteToFolder) {
  if (geteuid() != 0) GTEST_SKIP() << "needs root";
  ScratchDirectory const folder;
  ASSERT_EQ(chown(folder.Path().c_str(), kNobodysId, kNobodysId), 0);
  ASSERT_EQ(chmod(folder.Path().c_str(), 0775), 0);
  EXPECT_EQ(FileTrust(folder.Path()).WhyUntrusted(Status(kNobodysId, kNobodysId, 0664)), "");
  ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
  EXPECT_EQ(FileTrust(folder.Path()).WhyUntrusted(Status(kNobodysId, kNobodysId, 0644)), "");
  EXPECT_EQ(FileTrust(folder.Path()).WhyUntrusted(Status(kNobodysId, kNobodysId, 0664)),
            "can be written by the group '1234567890'");
}

TEST(FileTrustTest, ExaminesFoldersAbove) {
  ScratchDirectory const scratch;
  std::string const root = std::filesystem::canonical(scratch.Path()).string();
  std::filesystem::create_directories(root + "/a/b/c");
  FileTrust const trust("/nonexistent");
  EXPECT_EQ(trust.WhyUntrustedAbove(root + "/a/b/c"), "");
  ASSERT_EQ(chmod((root + "/a").c_str(), 0777), 0);
  std::string const reason = "the folder '" + root + "/a' can be written by everybody";
  EXPECT_EQ(trust.WhyUntrustedAbove(root + "/a/b/c"), reason);
  EXPECT_EQ(trust.WhyUntrustedAbove(root + "/a/b"), reason);
  EXPECT_EQ(trust.WhyUntrustedAbove(root + "/a"), "");
  // The folder of the library is not examined, and no folder whose name it begins with.
  EXPECT_EQ(FileTrust(root + "/a/b").WhyUntrustedAbove(root + "/a/b/c"), "");
  EXPECT_EQ(FileTrust(root + "/ab").WhyUntrustedAbove(root + "/a/b/c"), reason);
  EXPECT_EQ(FileTrust(root + "/a/b/c/d").WhyUntrustedAbove(root + "/a/b"), "");
  ASSERT_EQ(chmod((root + "/a").c_str(), 01777), 0);
  EXPECT_EQ(trust.WhyUntrustedAbove(root + "/a/b/c"), "");
  EXPECT_EQ(trust.WhyUntrustedAbove("/"), "");
  EXPECT_EQ(trust.WhyUntrustedAbove(root + "/missing/module"),
            "the folder '" + root + "/missing' cannot be examined: No such file or directory");
}
