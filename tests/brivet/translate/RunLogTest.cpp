#include "RunLog.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "ChildProcess.h"
#include "RecordingListener.h"
#include "ScratchDirectory.h"
#include "UnprivilegedProcess.h"
#include "VRELInfo.h"

namespace {

using Texts = std::vector<std::string>;

constexpr char kLog[] = "brivet_read.log";

// Runs in a directory of its own.
class RunLogTest : public testing::Test {
 protected:
  RunLogTest() : before(std::filesystem::current_path()) { std::filesystem::current_path(folder.Path()); }
  ~RunLogTest() override { std::filesystem::current_path(before); }

  // Opens a log, writes a message to it, and returns the warnings about the log.
  Texts Run(Texts const& filesOfRun) {
    RecordingListener listener;
    RunLog const log(kLog, filesOfRun);
    isWriting = log.IsWriting();
    Texts texts = listener.Texts();
    VRELInfo::Printf("text");
    return texts;
  }

  static std::string Refusal(std::string const& reason) { return "cannot write the log 'brivet_read.log': " + reason; }

  ScratchDirectory folder;
  std::filesystem::path before;
  bool isWriting = false;
};

}  // namespace

TEST_F(RunLogTest, ReplacesOldLog) {
  folder.Write(kLog, "a longer log of an earlier run");
  EXPECT_EQ(Run({"missing.stp", folder.Path()}), Texts{});
  EXPECT_TRUE(isWriting);
  EXPECT_EQ(folder.Read(kLog), "Message : text\n");
  VRELInfo::Printf("after the log was closed");
  EXPECT_EQ(folder.Read(kLog), "Message : text\n");
}

TEST_F(RunLogTest, IsWrittenToAnyFolder) {
  folder.Write("logs/a", "");
  {
    RunLog const log("logs/a.read.log", {});
    VRELInfo::Printf("text");
  }
  EXPECT_EQ(folder.Read("logs/a.read.log"), "Message : text\n");
}

TEST_F(RunLogTest, RefusesDirectory) {
  folder.Write("brivet_read.log/file", "");
  EXPECT_EQ(Run({}), Texts{Refusal("Is a directory")});
  EXPECT_FALSE(isWriting);
}

TEST_F(RunLogTest, RefusesPipeWithoutWaiting) {
  ASSERT_EQ(mkfifo(kLog, 0600), 0);
  EXPECT_EQ(Run({}), Texts{Refusal("it is not a regular file")});
  EXPECT_FALSE(isWriting);
}

// A link that another user created must not redirect the log.
TEST_F(RunLogTest, RefusesSymbolicLinks) {
  folder.Write("victim", "precious");
  for (char const* target : {"victim", "dangling", "/dev/null"}) {
    SCOPED_TRACE(target);
    ASSERT_EQ(symlink(target, kLog), 0);
    EXPECT_EQ(Run({}), Texts{Refusal("it is a symbolic link")});
    EXPECT_FALSE(isWriting);
    RunLog::RemoveOld(kLog, {});
    EXPECT_TRUE(std::filesystem::is_symlink(kLog));
    ASSERT_EQ(unlink(kLog), 0);
  }
  EXPECT_EQ(folder.Read("victim"), "precious");
  EXPECT_FALSE(folder.Has("dangling"));
}

TEST_F(RunLogTest, RefusesHardLinks) {
  folder.Write("victim", "precious");
  ASSERT_EQ(link("victim", kLog), 0);
  EXPECT_EQ(Run({}), Texts{Refusal("it has several hard links")});
  EXPECT_FALSE(isWriting);
  RunLog::RemoveOld(kLog, {});
  EXPECT_EQ(folder.Read(kLog), "precious");
}

TEST_F(RunLogTest, RefusesFileOfOtherUser) {
  if (geteuid() != 0) GTEST_SKIP() << "only root may set the owner of a file";
  folder.Write(kLog, "precious");
  ASSERT_EQ(chown(kLog, 12345, 12345), 0);
  EXPECT_EQ(Run({}), Texts{Refusal("it belongs to another user")});
  EXPECT_FALSE(isWriting);
  RunLog::RemoveOld(kLog, {});
  EXPECT_EQ(folder.Read(kLog), "precious");
}

TEST_F(RunLogTest, ReportsMissingPermission) {
  ASSERT_EQ(chmod(folder.Path().c_str(), 0555), 0);
  RunUnprivileged([this] {
    EXPECT_EQ(Run({}), Texts{Refusal("Permission denied")});
    EXPECT_FALSE(isWriting);
  });
  EXPECT_FALSE(folder.Has(kLog));
}

// A full disk accepts an empty file.
TEST_F(RunLogTest, ReportsFullDisk) {
  ChildResult const result = RunInChild([this] {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit const none = {0, 0};
    if (setrlimit(RLIMIT_FSIZE, &none) != 0) return 1;
    return Run({}) == Texts{Refusal("File too large")} && !isWriting ? 0 : 2;
  });
  EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(RunLogTest, RefusesFilesOfRun) {
  folder.Write(kLog, "a document");
  ASSERT_EQ(symlink(kLog, "soft.stp"), 0);
  for (char const* name : {"brivet_read.log", "./brivet_read.log", "soft.stp"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(Run({"missing.stp", name}), Texts{Refusal("it is a file of this run")});
    EXPECT_FALSE(isWriting);
    EXPECT_EQ(folder.Read(kLog), "a document");
  }
  ASSERT_EQ(link(kLog, "hard.stp"), 0);
  EXPECT_EQ(Run({"hard.stp"}), Texts{Refusal("it is a file of this run")});
}

// The output does not exist before the log is created.
TEST_F(RunLogTest, RefusesFutureOutput) {
  EXPECT_EQ(Run({"./brivet_read.log"}), Texts{Refusal("it is a file of this run")});
  EXPECT_FALSE(folder.Has(kLog));
}

TEST_F(RunLogTest, LogsOfBothPhasesOverlap) {
  {
    RunLog const read(kLog, {});
    VRELInfo::Printf("first");
    RunLog const write("brivet_write.log", {});
    VRELInfo::Printf("second");
  }
  EXPECT_EQ(folder.Read(kLog), "Message : first\nMessage : second\n");
  EXPECT_EQ(folder.Read("brivet_write.log"), "Message : second\n");
}

TEST_F(RunLogTest, RemoveOldKeepsFilesOfRun) {
  folder.Write(kLog, "r");
  folder.Write("brivet_write.log", "w");
  RunLog::RemoveOld("brivet_write.log", {"missing.stp"});
  EXPECT_TRUE(folder.Has(kLog));
  EXPECT_FALSE(folder.Has("brivet_write.log"));
  RunLog::RemoveOld("brivet_write.log", {});
  folder.Write("brivet_write.log", "a document");
  RunLog::RemoveOld("brivet_write.log", {"brivet_write.log"});
  EXPECT_EQ(folder.Read("brivet_write.log"), "a document");
}
