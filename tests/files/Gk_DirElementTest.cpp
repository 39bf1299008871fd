#include "Gk_DirElement.h"

#include <dirent.h>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <filesystem>
#include <string>
#include <type_traits>
#include <vector>

#include "ChildProcess.h"
#include "Gk_DirTraversor.h"
#include "OpenDescriptors.h"
#include "ScratchDirectory.h"
#include "UnprivilegedProcess.h"
#include "VRELExport.h"

namespace {

// Names that readdir returns in place of the real entries, in this order. Empty for the real entries.
std::vector<char const*> givenNames;

}  // namespace

// Replaces readdir of the C library, whose order depends on the file system.
extern "C" VREL_EXPORT dirent* readdir(DIR* directory) {
  static dirent given = {};
  static auto* const inLibrary = reinterpret_cast<dirent* (*)(DIR*)>(dlsym(RTLD_NEXT, "readdir"));
  if (givenNames.empty()) return inLibrary(directory);
  char const* const name = givenNames.front();
  givenNames.erase(givenNames.begin());
  if (name == nullptr) return nullptr;
  std::strcpy(given.d_name, name);
  given.d_type = DT_UNKNOWN;
  return &given;
}

namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

Gk_DirElement Directory(std::string const& path) {
  return Gk_DirElement(Gk_String(path.c_str()));
}

std::vector<std::string> Texts(VRELDynamicArray<Gk_FileElement> const& elements) {
  std::vector<std::string> texts;
  for (Gk_FileElement const& element : elements) texts.emplace_back(element.text());
  return texts;
}

// Returns the paths, relative to the directory, that fetchLeafFiles returns.
std::vector<std::string> Found(std::string const& directory, char const* pattern) {
  std::vector<std::string> names;
  for (std::string const& path : Texts(Directory(directory).fetchLeafFiles(pattern))) {
    EXPECT_EQ(path.substr(0, directory.size() + 1), directory + "/");
    names.push_back(path.substr(directory.size() + 1));
  }
  return names;
}

TEST(Gk_DirElementTest, AddsNoField) {
  static_assert(std::is_base_of_v<Gk_FileElement, Gk_DirElement>);
  static_assert(sizeof(Gk_DirElement) == sizeof(Gk_String));
  static_assert(!std::is_polymorphic_v<Gk_DirElement>);
  Gk_String text("a/b");
  Gk_DirElement const element(text);
  text[0] = 'x';
  EXPECT_EQ(element.text(), "a/b");
}

TEST(Gk_DirElementTest, IsDotTestsEndOfPath) {
  struct {
    char const* path;
    bool isDot;
    bool isDotDot;
  } const rows[] = {
      {".", true, false},  {"..", false, true},   {"a/.", true, false},  {"a/..", false, true},
      {"a.", true, false}, {"b..", false, true},  {"...", false, true},  {"a", false, false},
      {"", false, false},  {"./a", false, false}, {"../", false, false},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.path);
    EXPECT_EQ(Directory(row.path).isDot(), row.isDot);
    EXPECT_EQ(Directory(row.path).isDotDot(), row.isDotDot);
  }
}

TEST(Gk_DirElementTest, MkdirCreatesMissingParents) {
  ScratchDirectory const scratch;
  EXPECT_TRUE(Directory(scratch.Path("p/q/r")).mkdir());
  EXPECT_TRUE(fs::is_directory(scratch.Path("p/q/r")));
  // It exists.
  EXPECT_FALSE(Directory(scratch.Path("p/q/r")).mkdir());
  EXPECT_FALSE(Directory("").mkdir());
  // The parent of a path that ends in a slash is the directory itself, which exists then.
  EXPECT_FALSE(Directory(scratch.Path("s/t/")).mkdir());
  EXPECT_TRUE(fs::is_directory(scratch.Path("s/t")));
  scratch.Write("plain", "");
  EXPECT_FALSE(Directory(scratch.Path("plain/x/y")).mkdir());
}

TEST(Gk_DirElementTest, MkdirAcceptsRelativePath) {
  ScratchDirectory const scratch;
  ChildResult const result = RunInChild([&] {
    if (chdir(scratch.Path().c_str()) != 0) return 1;
    if (!Directory("p/q/r").mkdir() || !Directory("one").mkdir()) return 2;
    // Without a "/" a backslash ends a directory's name.
    if (!Directory("w\\x\\y").mkdir()) return 3;
    return 0;
  });
  EXPECT_EQ(result.exitStatus, 0);
  for (char const* name : {"p/q/r", "one", "w", "w\\x", "w\\x\\y"}) EXPECT_TRUE(fs::is_directory(scratch.Path(name)));
}

TEST(Gk_DirElementTest, MkdirModeIsLimitedByUmask) {
  ScratchDirectory const scratch;
  struct {
    mode_t mask;
    char const* parent;
    char const* name;
    mode_t mode;
  } const rows[] = {{027, "p", "p/q", 0750}, {0, "o", "o/q", 0777}};
  for (auto const& row : rows) {
    SCOPED_TRACE(row.name);
    mode_t const old = umask(row.mask);
    EXPECT_TRUE(Directory(scratch.Path(row.name)).mkdir());
    umask(old);
    struct stat stats;
    for (char const* name : {row.parent, row.name}) {
      ASSERT_EQ(stat(scratch.Path(name).c_str(), &stats), 0);
      EXPECT_EQ(stats.st_mode & 07777U, row.mode);
    }
  }
}

TEST(Gk_DirElementTest, MkdirSurvivesHostilePaths) {
  ScratchDirectory const scratch;
  std::string const name(200, 'd');
  std::string deep = scratch.Path();
  for (int i = 0; i < 10000; ++i) deep += "/" + name;
  EXPECT_FALSE(Directory(deep).mkdir());
  EXPECT_TRUE(scratch.Has(name + "/" + name + "/" + name));
  EXPECT_FALSE(Directory(std::string(1000000, '\\')).mkdir());
  EXPECT_FALSE(Directory(scratch.Path(std::string(256, 'n'))).mkdir());
}

TEST(Gk_DirElementTest, MkdirFailsWithoutCurrentDirectory) {
  ScratchDirectory const scratch;
  ChildResult const result = RunInChild([&] {
    fs::create_directory(scratch.Path("gone"));
    if (chdir(scratch.Path("gone").c_str()) != 0 || rmdir(scratch.Path("gone").c_str()) != 0) return 1;
    return Directory(".").mkdir() || Directory("x").mkdir() ? 2 : 0;
  });
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.signal, 0);
}

TEST(Gk_DirElementTest, RmdirRemovesEmptyDirectory) {
  ScratchDirectory const scratch;
  scratch.Write("full/file", "");
  fs::create_directory(scratch.Path("empty"));
  EXPECT_TRUE(Directory(scratch.Path("empty")).rmdir());
  EXPECT_FALSE(scratch.Has("empty"));
  EXPECT_FALSE(Directory(scratch.Path("full")).rmdir());
  EXPECT_FALSE(Directory(scratch.Path("full/file")).rmdir());
}

TEST(Gk_DirElementTest, ChildrenReturnsAllEntries) {
  ScratchDirectory const scratch;
  scratch.Write("one", "");
  scratch.Write(".hidden", "");
  scratch.Write("sub/below", "");
  std::string const path = scratch.Path();
  EXPECT_THAT(Texts(Directory(path).children()),
              UnorderedElementsAre(path + "/.", path + "/..", path + "/one", path + "/.hidden", path + "/sub"));
  // The path is used as given.
  EXPECT_THAT(Texts(Directory(scratch.Path("sub/")).children()),
              UnorderedElementsAre(path + "/sub//.", path + "/sub//..", path + "/sub//below"));
  for (Gk_FileElement const& child : Directory(path).children()) EXPECT_EQ(child.dataLen(), child.len() - 1);
}

TEST(Gk_DirElementTest, UnreadableDirectoryHasNoChildren) {
  ScratchDirectory const scratch;
  scratch.Write("file", "");
  for (std::string const& path : {scratch.Path("missing"), scratch.Path("file"), std::string()}) {
    SCOPED_TRACE(path);
    EXPECT_EQ(Directory(path).children().size(), 0);
    EXPECT_EQ(Directory(path).fetchLeafFiles("*").size(), 0);
    EXPECT_EQ(Directory(path).fullPath().len(), 0);
  }
}

TEST(Gk_DirElementTest, ClosesDirectories) {
  ScratchDirectory const scratch;
  scratch.Write("sub/file", "");
  Directory(scratch.Path()).children();
  Directory(scratch.Path()).fetchLeafFiles("*");
  Directory(scratch.Path()).fullPath();
  EXPECT_EQ(CountOpenDescriptors(scratch.Path()), 0);
  EXPECT_EQ(CountOpenDescriptors(scratch.Path("sub")), 0);
}

TEST(Gk_DirElementTest, FetchLeafFilesMatchesPaths) {
  ScratchDirectory const scratch;
  for (char const* name : {"a.stp", "b.STP", "c.igs", ".x.stp", "sub/d.stp", "sub/deep/e.stp", "sub/deep/f.txt",
                           "dir.stp/g", "dot./h.stp", "dots../i.stp"}) {
    scratch.Write(name, "");
  }
  std::string const path = scratch.Path();
  // "*" matches slashes and leading dots, and a pattern may end before a "/" of the path.
  EXPECT_THAT(Found(path, "*.stp"),
              UnorderedElementsAre("a.stp", "b.STP", ".x.stp", "sub/d.stp", "sub/deep/e.stp", "dir.stp/g"));
  EXPECT_THAT(Found(path, "*/sub/*"), UnorderedElementsAre("sub/d.stp", "sub/deep/e.stp", "sub/deep/f.txt"));
  // The pattern matches the whole path.
  EXPECT_THAT(Found(path, "a.stp"), IsEmpty());
  EXPECT_THAT(Found(path, (path + "/?.igs").c_str()), ElementsAre("c.igs"));
  EXPECT_THAT(Found(path, "*/e.*"), ElementsAre("sub/deep/e.stp"));
  EXPECT_THAT(Found(path, "nothing*"), IsEmpty());
}

TEST(Gk_DirElementTest, FetchLeafFilesIsDepthFirst) {
  ScratchDirectory const scratch;
  for (int i = 0; i < 20; ++i) {
    scratch.Write("f" + std::to_string(i), "");
    scratch.Write("d" + std::to_string(i) + "/x", "");
    scratch.Write("d" + std::to_string(i) + "/y/z", "");
  }
  std::vector<std::string> expected;
  auto const add = [&](Gk_DirElement const& directory, auto const& self) -> void {
    for (Gk_FileElement const& child : directory.children()) {
      Gk_DirElement const below(child);
      if (child.isFile()) expected.emplace_back(child.text());
      if (child.isDirectory() && !below.isDot() && !below.isDotDot()) self(below, self);
    }
  };
  add(Directory(scratch.Path()), add);
  ASSERT_EQ(expected.size(), 60U);
  EXPECT_EQ(Texts(Directory(scratch.Path()).fetchLeafFiles("*")), expected);
}

TEST(Gk_DirElementTest, FetchLeafFilesFollowsLinks) {
  ScratchDirectory const scratch;
  scratch.Write("real/file", "");
  fs::create_symlink("real/file", scratch.Path("tofile"));
  fs::create_symlink("real", scratch.Path("todirectory"));
  fs::create_symlink("nowhere", scratch.Path("broken"));
  ASSERT_EQ(mkfifo(scratch.Path("pipe").c_str(), 0600), 0);
  fs::create_symlink("pipe", scratch.Path("topipe"));
  EXPECT_THAT(Found(scratch.Path(), "*"), UnorderedElementsAre("real/file", "tofile", "todirectory/file"));
}

TEST(Gk_DirElementTest, FetchLeafFilesEndsAtLinkCycle) {
  ScratchDirectory const scratch;
  scratch.Write("a/file", "");
  for (char const* name : {"a/up", "a/up2", "a/up3"}) fs::create_symlink("..", scratch.Path(name));
  fs::create_symlink(".", scratch.Path("a/self"));
  fs::create_symlink("loop", scratch.Path("loop"));
  EXPECT_THAT(Found(scratch.Path(), "*"), ElementsAre("a/file"));
  // If the search starts at a link, the link back refers to the start.
  fs::create_symlink("a", scratch.Path("b"));
  EXPECT_THAT(Found(scratch.Path("b"), "*"), UnorderedElementsAre("file"));
}

TEST(Gk_DirElementTest, FetchLeafFilesAcceptsInvalidText) {
  ScratchDirectory const scratch;
  std::string const longName(255, 'n');
  scratch.Write("\xFF\xFE\n", "");
  scratch.Write("sub/" + longName, "");
  EXPECT_THAT(Found(scratch.Path(), "*"), UnorderedElementsAre("\xFF\xFE\n", "sub/" + longName));
}

// Descends with chdir, because the path to the bottom exceeds PATH_MAX.
TEST(Gk_DirElementTest, FetchLeafFilesStopsAtPathMax) {
  ScratchDirectory const scratch;
  std::string const name(200, 'd');
  ChildResult const result = RunInChild([&] {
    if (chdir(scratch.Path().c_str()) != 0) return 1;
    for (int i = 0; i < 30; ++i) {
      if (mkdir(name.c_str(), 0700) != 0 || chdir(name.c_str()) != 0) return 2;
      std::FILE* const file = std::fopen("f", "w");
      if (file == nullptr) return 3;
      std::fclose(file);
    }
    return 0;
  });
  ASSERT_EQ(result.exitStatus, 0);
  // "/f" must fit after each "/ddd..." within the longest path of 4095 bytes.
  std::size_t const expected = (PATH_MAX - 1 - 2 - scratch.Path().size()) / (name.size() + 1);
  EXPECT_EQ(Found(scratch.Path(), "*").size(), expected);
}

TEST(Gk_DirElementTest, DepthNeedsNoDescriptors) {
  ScratchDirectory const scratch;
  std::string below;
  for (int i = 0; i < 200; ++i) below += "d/";
  std::string const bottom = scratch.Write(below + "bottom", "");
  ChildResult const result = RunInChild([&] {
    rlimit const few = {32, 32};
    if (setrlimit(RLIMIT_NOFILE, &few) != 0) return 1;
    return Texts(Directory(scratch.Path()).fetchLeafFiles("*bottom")) == std::vector<std::string>{bottom} ? 0 : 2;
  });
  EXPECT_EQ(result.exitStatus, 0);
}

TEST(Gk_DirElementTest, FetchLeafFilesSkipsUnreadableFolders) {
  ScratchDirectory const scratch;
  scratch.Write("closed/file", "");
  scratch.Write("listed/file", "");
  scratch.Write("open/file", "");
  ASSERT_EQ(chmod(scratch.Path().c_str(), 0755), 0);
  ASSERT_EQ(chmod(scratch.Path("closed").c_str(), 0), 0);
  // Its entries can be listed, but stat of its files fails.
  ASSERT_EQ(chmod(scratch.Path("listed").c_str(), 0444), 0);
  RunUnprivileged([&] {
    EXPECT_THAT(Found(scratch.Path(), "*"), ElementsAre("open/file"));
    EXPECT_EQ(Directory(scratch.Path("closed")).children().size(), 0);
    EXPECT_EQ(Directory(scratch.Path("listed")).children().size(), 3);
    EXPECT_EQ(Directory(scratch.Path("listed")).fullPath().len(), 0) << "not even its dot is known to be a directory";
    EXPECT_FALSE(Directory(scratch.Path("new")).mkdir());
    EXPECT_FALSE(Directory(scratch.Path("closed/x/y")).mkdir());
  });
  ASSERT_EQ(chmod(scratch.Path("closed").c_str(), 0700), 0);
  ASSERT_EQ(chmod(scratch.Path("listed").c_str(), 0700), 0);
}

TEST(Gk_DirElementTest, FullPathDropsDotEntry) {
  ScratchDirectory const scratch;
  fs::create_directory(scratch.Path("sub"));
  EXPECT_STREQ(Directory(scratch.Path("sub")).fullPath(), scratch.Path("sub").c_str());
  EXPECT_STREQ(Directory(scratch.Path("sub/")).fullPath(), scratch.Path("sub/").c_str());
  // A file does not count.
  scratch.Write("sub/a.", "");
  EXPECT_STREQ(Directory(scratch.Path("sub")).fullPath(), scratch.Path("sub").c_str());
}

TEST(Gk_DirElementTest, FullPathSkipsOtherEntries) {
  ScratchDirectory const scratch;
  for (char const* name : {"a", "b..", "c."}) fs::create_directory(scratch.Path(name));
  scratch.Write("d.", "");
  givenNames = {"..", "a", "b..", "missing.", "d.", "c.", ".", nullptr};
  EXPECT_STREQ(Directory(scratch.Path()).fullPath(), (scratch.Path() + "/").c_str()) << "c. without its last two";
  givenNames = {"d.", "..", ".", "c.", nullptr};
  EXPECT_STREQ(Directory(scratch.Path()).fullPath(), scratch.Path().c_str());
  givenNames = {"..", "a", "d.", nullptr};
  EXPECT_EQ(Directory(scratch.Path()).fullPath().len(), 0);
  givenNames.clear();
}

TEST(Gk_DirElementTest, FullPathUsesFirstDirectoryEndingInDot) {
  ScratchDirectory const scratch;
  std::string expected;
  for (int i = 0; i < 30 && expected.empty(); ++i) {
    fs::create_directory(scratch.Path("a" + std::to_string(i) + "."));
  }
  std::vector<std::string> const children = Texts(Directory(scratch.Path()).children());
  auto const first = std::find_if(children.begin(), children.end(), [](std::string const& child) {
    return child.back() == '.' && child[child.size() - 2] != '.';
  });
  ASSERT_NE(first, children.end());
  EXPECT_STREQ(Directory(scratch.Path()).fullPath(), first->substr(0, first->size() - 2).c_str());
}

}  // namespace
