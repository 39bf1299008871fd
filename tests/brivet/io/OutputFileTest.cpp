#include "OutputFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "ChildProcess.h"
#include "FileError.h"
#include "Gk_ErrMgr.h"
#include "ScratchDirectory.h"
#include "UnprivilegedProcess.h"
#include "VRELAbortException.h"

namespace {

class OutputFileTest : public testing::Test {
 protected:
  struct stat NoInput() const {
    struct stat status;
    EXPECT_EQ(stat("/", &status), 0);
    return status;
  }

  std::unique_ptr<OutputFile> Open(std::string const& path) const {
    return std::make_unique<OutputFile>(path, NoInput(), OutputFile::Synchronized);
  }

  // Returns the message with which the path is refused, or an empty string.
  std::string Refusal(std::string const& path) const {
    try {
      Open(path);
    } catch (FileError const& error) {
      EXPECT_EQ(error.result, VREL_E_FILE_SAVE);
      return error.message;
    }
    return "";
  }

  std::string RefusalText(std::string const& path, std::string const& reason) const {
    return "cannot write '" + path + "': " + reason;
  }

  mode_t Mode(std::string const& name) const {
    struct stat status;
    EXPECT_EQ(stat(folder.Path(name).c_str(), &status), 0);
    return status.st_mode & 07777U;
  }

  static void Put(OutputFile& file, std::string const& bytes) {
    EXPECT_EQ(file.write(bytes.data(), static_cast<int>(bytes.size())), static_cast<int>(bytes.size()));
  }

  std::size_t FilesInFolder() const {
    std::filesystem::directory_iterator const all(folder.Path());
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
  }

  ScratchDirectory folder;
};

}  // namespace

TEST_F(OutputFileTest, CommitReplacesFile) {
  std::string const path = folder.Write("page.html", "old");
  {
    auto const file = Open(path);
    Put(*file, "new");
    file->flush();
    EXPECT_EQ(folder.Read("page.html"), "old");
    EXPECT_FALSE(file->IsStandardOutput());
    file->Commit();
    EXPECT_EQ(folder.Read("page.html"), "new");
  }
  EXPECT_EQ(folder.Read("page.html"), "new");
  EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(OutputFileTest, DestructorRemovesTemporaryFile) {
  std::string const path = folder.Write("page.html", "old");
  for (std::string const& each : {path, folder.Path("new.html")}) {
    auto const file = Open(each);
    Put(*file, std::string(1 << 20, 'x'));
  }
  EXPECT_EQ(folder.Read("page.html"), "old");
  EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(OutputFileTest, AcceptsBlocksOfAnySize) {
  std::string all;
  auto const file = Open(folder.Path("page.html"));
  for (std::size_t const size : {std::size_t{0}, std::size_t{1}, std::size_t{262143}, std::size_t{1},
                                 std::size_t{262144}, std::size_t{700000}, std::size_t{3}}) {
    std::string const block(size, static_cast<char>('a' + all.size() % 26));
    Put(*file, block);
    all += block;
  }
  file->Commit();
  EXPECT_TRUE(folder.Read("page.html") == all);
}

TEST_F(OutputFileTest, RefusesNegativeCount) {
  auto const file = Open(folder.Path("page.html"));
  Put(*file, "a");
  EXPECT_EQ(file->write("b", -1), -1);
  EXPECT_EQ(file->write("b", INT_MIN), -1);
  Put(*file, "c");
  file->Commit();
  EXPECT_EQ(folder.Read("page.html"), "ac");
}

TEST_F(OutputFileTest, NewFileHasModeOfUmask) {
  mode_t const before = umask(027);
  auto const file = Open(folder.Path("page.html"));
  umask(before);
  file->Commit();
  struct stat status;
  ASSERT_EQ(stat(folder.Path("page.html").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST_F(OutputFileTest, FollowsSymbolicLinks) {
  folder.Write("there/page.html", "old");
  ASSERT_EQ(symlink("there/page.html", folder.Path("link.html").c_str()), 0);
  ASSERT_EQ(symlink("link.html", folder.Path("twice.html").c_str()), 0);
  ASSERT_EQ(symlink("there/new.html", folder.Path("dangling.html").c_str()), 0);
  for (char const* name : {"twice.html", "dangling.html"}) {
    auto const file = Open(folder.Path(name));
    Put(*file, name);
    file->Commit();
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path(name)));
  }
  EXPECT_EQ(folder.Read("there/page.html"), "twice.html");
  EXPECT_EQ(folder.Read("there/new.html"), "dangling.html");
  ASSERT_EQ(symlink("loop.html", folder.Path("loop.html").c_str()), 0);
  EXPECT_EQ(Refusal(folder.Path("loop.html")),
            RefusalText(folder.Path("loop.html"), "Too many levels of symbolic links"));
}

TEST_F(OutputFileTest, ReportsUnwritablePaths) {
  folder.Write("there/file", "");
  EXPECT_EQ(Refusal(folder.Path()), RefusalText(folder.Path(), "Is a directory"));
  EXPECT_EQ(Refusal(folder.Path("new/")), RefusalText(folder.Path("new/"), "Is a directory"));
  EXPECT_EQ(Refusal(folder.Path("missing/page.html")),
            RefusalText(folder.Path("missing/page.html"), "No such file or directory"));
  EXPECT_EQ(Refusal(folder.Path("there/file/page.html")),
            RefusalText(folder.Path("there/file/page.html"), "Not a directory"));
  EXPECT_EQ(Refusal(folder.Path(std::string(300, 'a'))),
            RefusalText(folder.Path(std::string(300, 'a')), "File name too long"));
  EXPECT_EQ(Refusal(""), RefusalText("", "No such file or directory"));
  folder.Write("closed/page.html", "");
  ASSERT_EQ(chmod(folder.Path("closed").c_str(), 0555), 0);
  folder.Write("there/page.html", "old");
  ASSERT_EQ(chmod(folder.Path("there").c_str(), 0777), 0);
  ASSERT_EQ(chmod(folder.Path("there/page.html").c_str(), 0444), 0);
  RunUnprivileged([this] {
    EXPECT_EQ(Refusal(folder.Path("closed/new.html")),
              RefusalText(folder.Path("closed/new.html"), "Permission denied"));
    EXPECT_EQ(Refusal(folder.Path("there/page.html")),
              RefusalText(folder.Path("there/page.html"), "Permission denied"));
  });
}

TEST_F(OutputFileTest, RefusesInput) {
  folder.Write("a.stp", "the input");
  ASSERT_EQ(link(folder.Path("a.stp").c_str(), folder.Path("hard.stp").c_str()), 0);
  ASSERT_EQ(symlink("a.stp", folder.Path("soft.stp").c_str()), 0);
  struct stat input;
  ASSERT_EQ(stat(folder.Path("a.stp").c_str(), &input), 0);
  for (char const* name : {"a.stp", "hard.stp", "soft.stp"}) {
    try {
      OutputFile const file(folder.Path(name), input, OutputFile::Synchronized);
      ADD_FAILURE() << name;
    } catch (FileError const& error) {
      EXPECT_EQ(error.message, RefusalText(folder.Path(name), "it is the input file"));
    }
  }
  EXPECT_EQ(folder.Read("a.stp"), "the input");
}

TEST_F(OutputFileTest, WritesToDeviceDirectly) {
  auto const nothing = Open("/dev/null");
  Put(*nothing, "bytes");
  nothing->Commit();
  auto const full = Open("/dev/full");
  Put(*full, "bytes");
  try {
    full->Commit();
    FAIL();
  } catch (FileError const& error) {
    EXPECT_EQ(error.result, VREL_E_FILE_SAVE);
    EXPECT_EQ(error.message, "cannot write '/dev/full': No space left on device");
  }
}

TEST_F(OutputFileTest, KeepsFirstFailure) {
  auto const full = Open("/dev/full");
  EXPECT_NO_THROW(full->Check());
  std::string const much(300000, 'x');
  EXPECT_EQ(full->write(much.data(), static_cast<int>(much.size())), -1);
  EXPECT_EQ(full->write("x", 1), -1);
  EXPECT_THROW(full->Check(), FileError);
  EXPECT_THROW(full->Commit(), FileError);
}

TEST_F(OutputFileTest, WritesToPipeDirectly) {
  std::string const path = folder.Path("pipe");
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  std::string received;
  std::thread reader([&] {
    int const descriptor = open(path.c_str(), O_RDONLY);
    char block[65536];
    for (ssize_t count = 0; (count = read(descriptor, block, sizeof block)) > 0;) {
      received.append(block, static_cast<std::size_t>(count));
    }
    close(descriptor);
  });
  std::string const sent(500000, 'p');
  {
    auto const file = Open(path);
    Put(*file, sent);
    file->Commit();
  }
  reader.join();
  EXPECT_TRUE(received == sent);
  EXPECT_TRUE(std::filesystem::is_fifo(path));
}

TEST_F(OutputFileTest, WaitIsInterruptedByAbort) {
  std::string const path = folder.Path("pipe");
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  int const idle = open(path.c_str(), O_RDWR);
  ASSERT_GE(idle, 0);
  auto const file = Open(path);
  Gk_ErrMgr::setAbort();
  std::string const much(1 << 20, 'x');
  EXPECT_THROW(file->write(much.data(), static_cast<int>(much.size())), VRELAbortException);
  close(idle);
}

TEST_F(OutputFileTest, AppendsToStandardOutput) {
  for (char const* path : {"-", "/dev/stdout"}) {
    SCOPED_TRACE(path);
    ChildResult const result = RunInChild([this, path] {
      auto const file = Open(path);
      file->write("to standard output", 18);
      file->Commit();
      return file->IsStandardOutput() ? 0 : 1;
    });
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, "to standard output");
  }
  folder.Write("page.html", "first, ");
  ChildResult const result = RunInChild([this] {
    int const descriptor = open(folder.Path("page.html").c_str(), O_WRONLY | O_APPEND);
    dup2(descriptor, STDOUT_FILENO);
    auto const file = Open(folder.Path("page.html"));
    file->write("second", 6);
    file->Commit();
    return 0;
  });
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(folder.Read("page.html"), "first, second");
}

TEST_F(OutputFileTest, ReplacementKeepsMode) {
  for (mode_t const mode : {0600U, 0644U, 0755U, 0666U, 02640U}) {
    std::string const path = folder.Write("page.html", "old");
    ASSERT_EQ(chmod(path.c_str(), mode), 0);
    auto const file = Open(path);
    Put(*file, "new");
    file->Commit();
    EXPECT_EQ(Mode("page.html"), mode);
    EXPECT_EQ(folder.Read("page.html"), "new");
  }
}

TEST_F(OutputFileTest, ReplacementKeepsOwnerAndGroup) {
  if (geteuid() != 0) GTEST_SKIP() << "only root may set the owner of a file";
  std::string const path = folder.Write("page.html", "old");
  ASSERT_EQ(chown(path.c_str(), 12345, 23456), 0);
  ASSERT_EQ(chmod(path.c_str(), 04750), 0);
  Open(path)->Commit();
  struct stat status;
  ASSERT_EQ(stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, 12345U);
  EXPECT_EQ(status.st_gid, 23456U);
  EXPECT_EQ(status.st_mode & 07777U, 04750U);
}

// Another user cannot set the group; the group of the new file gets no more access than everybody.
TEST_F(OutputFileTest, ReplacementDropsAccessOfLostGroup) {
  if (geteuid() != 0) GTEST_SKIP() << "only root may set the owner of a file";
  struct Row {
    mode_t before;
    mode_t after;
  };
  ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
  for (Row const row : {Row{0666, 0666}, Row{06662, 0622}, Row{0642, 0602}, Row{0646, 0646}}) {
    std::string const path = folder.Write("page.html", "old");
    ASSERT_EQ(chown(path.c_str(), 0, 23456), 0);
    ASSERT_EQ(chmod(path.c_str(), row.before), 0);
    RunUnprivileged([&] {
      // The file descriptors in /proc belong to root again after setuid without exec.
      prctl(PR_SET_DUMPABLE, 1);
      Open(path)->Commit();
    });
    EXPECT_EQ(Mode("page.html"), row.after);
    std::filesystem::remove(path);
  }
}

TEST_F(OutputFileTest, TemporaryFileIsPrivateWhileReplacing) {
  std::string const path = folder.Write("page.html", "old");
  ASSERT_EQ(chmod(path.c_str(), 0600), 0);
  auto const file = Open(path);
  struct stat status;
  for (auto const& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code error;
    std::string const name = std::filesystem::read_symlink(entry.path(), error).string();
    if (name.rfind(folder.Path(), 0) != 0 || stat(entry.path().c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
      continue;
    }
    EXPECT_EQ(status.st_mode & 0777U, 0600U) << name;
  }
}

TEST_F(OutputFileTest, ReplacementLeavesHardLinksUnchanged) {
  std::string const path = folder.Write("page.html", "old");
  ASSERT_EQ(link(path.c_str(), folder.Path("other.html").c_str()), 0);
  auto const file = Open(path);
  Put(*file, "new");
  file->Commit();
  EXPECT_EQ(folder.Read("page.html"), "new");
  EXPECT_EQ(folder.Read("other.html"), "old");
}

TEST_F(OutputFileTest, IsCommittedAfterCommitOnly) {
  auto const file = Open(folder.Path("page.html"));
  EXPECT_FALSE(file->IsCommitted());
  file->Commit();
  EXPECT_TRUE(file->IsCommitted());
}
