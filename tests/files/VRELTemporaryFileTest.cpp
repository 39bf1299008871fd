#include "VRELTemporaryFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <string>
#include <type_traits>

#include "ChildProcess.h"
#include "OpenDescriptors.h"
#include "ScratchDirectory.h"

namespace {

namespace fs = std::filesystem;
using ::testing::MatchesRegex;

std::string PathOf(VRELTemporaryFile const& file) {
  VRELFilePath path("before");
  file.GetPath(path);
  return path.GetPath().toUtf8();
}

bool IsThere(std::string const& path) {
  return fs::exists(fs::symlink_status(path));
}

void WriteFile(std::string const& path, std::string const& text) {
  std::ofstream(path) << text;
}

std::string ReadFile(std::string const& path) {
  std::ifstream stream(path);
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

TEST(VRELTemporaryFileTest, NameContainsSourceNameAndNumber) {
  struct {
    char const* source;
    char const* name;
    unsigned int number;
    char const* tail;
  } const rows[] = {
      {"", nullptr, 0, ""},
      {"/d/m.stp", "x/y.tmp", 3, "_m.stp_y.tmp_3"},
      {"/d/m.stp", nullptr, 0, "_m.stp"},
      {"/d/m.stp", nullptr, 3, "_m.stp"},
      {"", "y.tmp", 0, "_y.tmp"},
      {"", "y.tmp", 12, "_y.tmp_12"},
      {"", "\\d\\y.tmp", 0, "_y.tmp"},
      {"d/", "y", 0, "__y"},
      {"", "", 0, "_"},
      {"", "", 7, "__7"},
      {"", "y", 4294967295U, "_y_-1"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(std::string(row.source) + " " + row.tail);
    VRELTemporaryFile const file(VRELFilePath(row.source), row.name, row.number);
    std::string const path = PathOf(file);
    std::string const tail = row.tail;
    ASSERT_GE(path.size(), tail.size());
    EXPECT_EQ(path.substr(path.size() - tail.size()), tail);
    EXPECT_THAT(path.substr(0, path.size() - tail.size()),
                MatchesRegex("/tmp/file[A-Za-z0-9][A-Za-z0-9][A-Za-z0-9][A-Za-z0-9][A-Za-z0-9][A-Za-z0-9]"));
  }
  EXPECT_EQ(PathOf(VRELTemporaryFile()).size(), 15U);
}

TEST(VRELTemporaryFileTest, OverlongPartsAreLeftOut) {
  // 15 + 4079 = 4094 characters, which is below 4095.
  std::string const fits(4079, 's');
  std::string const tooLong(4080, 's');
  EXPECT_EQ(PathOf(VRELTemporaryFile(VRELFilePath(fits.c_str()), nullptr, 0)).size(), 15U + 1 + 4079);
  EXPECT_EQ(PathOf(VRELTemporaryFile(VRELFilePath(tooLong.c_str()), nullptr, 0)).size(), 15U);
  EXPECT_EQ(PathOf(VRELTemporaryFile(VRELFilePath(), fits.c_str(), 0)).size(), 15U + 1 + 4079);
  EXPECT_EQ(PathOf(VRELTemporaryFile(VRELFilePath(), tooLong.c_str(), 0)).size(), 15U);
  // The number counts as part of the name.
  EXPECT_EQ(PathOf(VRELTemporaryFile(VRELFilePath(), std::string(4077, 's').c_str(), 3)).size(), 15U + 1 + 4079);
  EXPECT_EQ(PathOf(VRELTemporaryFile(VRELFilePath(), std::string(4078, 's').c_str(), 3)).size(), 15U);
  // 15 + 1 + 2000 characters for the source, then 2078 or 2079 for the name.
  VRELFilePath const source(std::string(2000, 's').c_str());
  EXPECT_EQ(PathOf(VRELTemporaryFile(source, std::string(2078, 'n').c_str(), 0)).size(), 4095U);
  EXPECT_EQ(PathOf(VRELTemporaryFile(source, std::string(2079, 'n').c_str(), 0)).size(), 2016U);
}

TEST(VRELTemporaryFileTest, NamesAreUnique) {
  std::set<std::string> names;
  for (int i = 0; i < 1000; ++i) names.insert(PathOf(VRELTemporaryFile()));
  EXPECT_EQ(names.size(), 1000U);
}

TEST(VRELTemporaryFileTest, DirectoryIgnoresEnvironment) {
  ASSERT_EQ(setenv("TMPDIR", "/usr", 1), 0);
  EXPECT_EQ(PathOf(VRELTemporaryFile()).substr(0, 9), "/tmp/file");
  unsetenv("TMPDIR");
}

TEST(VRELTemporaryFileTest, FileExistsFromOpenToDestructor) {
  std::string path;
  {
    VRELTemporaryFile file(VRELFilePath("m.stp"), "part", 1);
    path = PathOf(file);
    EXPECT_FALSE(IsThere(path));
    std::FILE* const stream = file.Open(nullptr);
    ASSERT_NE(stream, nullptr);
    EXPECT_TRUE(IsThere(path));
    // Null means "w+b".
    EXPECT_EQ(std::fputs("text", stream), 1);
    std::rewind(stream);
    char bytes[8] = {};
    EXPECT_EQ(std::fread(bytes, 1, sizeof bytes, stream), 4U);
    EXPECT_STREQ(bytes, "text");
  }
  EXPECT_FALSE(IsThere(path));
}

TEST(VRELTemporaryFileTest, SecondOpenReturnsSameStream) {
  VRELTemporaryFile file;
  std::FILE* const stream = file.Open("w");
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(file.Open("r"), stream);
  EXPECT_EQ(file.Open(nullptr), stream);
}

TEST(VRELTemporaryFileTest, OpenAfterCloseReopens) {
  VRELTemporaryFile file;
  file.Close();
  std::string const path = PathOf(file);
  std::FILE* stream = file.Open("wb");
  ASSERT_NE(stream, nullptr);
  std::fputs("first", stream);
  file.Close();
  EXPECT_EQ(CountOpenDescriptors(path), 0);
  EXPECT_EQ(ReadFile(path), "first");

  stream = file.Open("ab");
  ASSERT_NE(stream, nullptr);
  std::fputs(" second", stream);
  file.Close();
  EXPECT_EQ(ReadFile(path), "first second");

  stream = file.Open("rb");
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(std::fgetc(stream), 'f');
  file.Close();

  ASSERT_NE(file.Open("w+b"), nullptr);
  EXPECT_EQ(ReadFile(path), "");
}

TEST(VRELTemporaryFileTest, OpenForReadingNeedsFile) {
  VRELTemporaryFile file;
  EXPECT_EQ(file.Open("rb"), nullptr);
  EXPECT_EQ(file.Open("r+b"), nullptr);
  EXPECT_EQ(file.Open(""), nullptr);
  EXPECT_FALSE(IsThere(PathOf(file)));
  EXPECT_NE(file.Open("a"), nullptr);
}

TEST(VRELTemporaryFileTest, OpenAcceptsOwnRegularFile) {
  VRELTemporaryFile file;
  WriteFile(PathOf(file), "made by a tool");
  std::FILE* const stream = file.Open("rb");
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(std::fgetc(stream), 'm');
  file.Close();
  EXPECT_NE(file.Open("wb"), nullptr);
  EXPECT_EQ(ReadFile(PathOf(file)), "");
}

TEST(VRELTemporaryFileTest, DestructorRemovesUnopenedFile) {
  std::string path;
  {
    VRELTemporaryFile const file;
    path = PathOf(file);
    WriteFile(path, "made by a tool");
  }
  EXPECT_FALSE(IsThere(path));
}

TEST(VRELTemporaryFileTest, OpenRefusesLinksAndForeignFiles) {
  ScratchDirectory const scratch;
  std::string const victim = scratch.Write("victim", "precious");
  for (char const* mode : {"w+b", "a", "rb", "r+", static_cast<char const*>(nullptr)}) {
    SCOPED_TRACE(mode != nullptr ? mode : "null");
    VRELTemporaryFile linked;
    fs::create_symlink(victim, PathOf(linked));
    EXPECT_EQ(linked.Open(mode), nullptr);
    VRELTemporaryFile dangling;
    fs::create_symlink(scratch.Path("new"), PathOf(dangling));
    EXPECT_EQ(dangling.Open(mode), nullptr);
    VRELTemporaryFile pipe;
    ASSERT_EQ(mkfifo(PathOf(pipe).c_str(), 0600), 0);
    EXPECT_EQ(pipe.Open(mode), nullptr);
    VRELTemporaryFile hard;
    WriteFile(PathOf(hard), "");
    fs::create_hard_link(PathOf(hard), PathOf(hard) + ".second");
    EXPECT_EQ(hard.Open(mode), nullptr);
    fs::remove(PathOf(hard) + ".second");
    if (geteuid() == 0) {
      VRELTemporaryFile foreign;
      WriteFile(PathOf(foreign), "");
      ASSERT_EQ(chown(PathOf(foreign).c_str(), 65534, 65534), 0);
      EXPECT_EQ(foreign.Open(mode), nullptr);
    }
  }
  EXPECT_EQ(scratch.Read("victim"), "precious");
  EXPECT_FALSE(scratch.Has("new"));
}

TEST(VRELTemporaryFileTest, RemoveReportsMissingFile) {
  VRELTemporaryFile file;
  EXPECT_EQ(file.Remove(), -1);
  std::FILE* const stream = file.Open(nullptr);
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(file.Remove(), 0);
  EXPECT_FALSE(IsThere(PathOf(file)));
  // The stream stays open.
  EXPECT_EQ(file.Open(nullptr), stream);
  EXPECT_EQ(std::fputs("x", stream), 1);
  EXPECT_EQ(file.Remove(), -1);
}

TEST(VRELTemporaryFileTest, TerminateClearsPath) {
  VRELTemporaryFile file;
  std::string const path = PathOf(file);
  ASSERT_NE(file.Open(nullptr), nullptr);
  file.Terminate();
  EXPECT_FALSE(IsThere(path));
  EXPECT_EQ(PathOf(file), "");
  EXPECT_EQ(file.Remove(), 0);
  EXPECT_EQ(file.Open(nullptr), nullptr);
  EXPECT_EQ(file.Open("r"), nullptr);
  file.Terminate();
  EXPECT_EQ(PathOf(file), "");
}

TEST(VRELTemporaryFileTest, OpenFailsForOverlongName) {
  VRELTemporaryFile file(VRELFilePath(std::string(3000, 's').c_str()), nullptr, 0);
  EXPECT_EQ(file.Open(nullptr), nullptr);
  EXPECT_EQ(file.Remove(), -1);
}

TEST(VRELTemporaryFileTest, HasVirtualDestructor) {
  static_assert(std::has_virtual_destructor_v<VRELTemporaryFile>);
  static_assert(!std::is_copy_constructible_v<VRELTemporaryFile>);
  struct Derived : VRELTemporaryFile {};
  std::unique_ptr<VRELTemporaryFile> file(new Derived);
  std::string const path = PathOf(*file);
  ASSERT_NE(file->Open(nullptr), nullptr);
  file.reset();
  EXPECT_FALSE(IsThere(path));
}

// In a file system without /tmp.
TEST(VRELTemporaryFileTest, FallsBackToCurrentDirectory) {
  if (geteuid() != 0) GTEST_SKIP() << "chroot needs root";
  ScratchDirectory const scratch;
  // Loads the codepage before the system's files become inaccessible.
  PathOf(VRELTemporaryFile());
  ChildResult const result = RunInChildWithoutTeardown([&] {
    if (chroot(scratch.Path().c_str()) != 0 || chdir("/") != 0) return 1;
    VRELTemporaryFile file;
    if (PathOf(file) != "VRELTemp_1") return 2;
    if (file.Open(nullptr) == nullptr || !IsThere("/VRELTemp_1")) return 3;
    if (PathOf(VRELTemporaryFile(VRELFilePath("d/m.stp"), "n", 2)) != "_m.stp_n_2") return 4;
    return 0;
  });
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_FALSE(scratch.Has("VRELTemp_1"));
}

}  // namespace
