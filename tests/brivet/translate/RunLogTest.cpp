#include "RunLog.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

#include "RecordingListener.h"
#include "ScratchDirectory.h"
#include "UnprivilegedProcess.h"
#include "VRELInfo.h"

namespace {

using Texts = std::vector<std::string>;

// In a directory of its own, which the tests run in.
class RunLogTest : public testing::Test {
 protected:
  RunLogTest() : before(std::filesystem::current_path()) { std::filesystem::current_path(folder.Path()); }
  ~RunLogTest() override { std::filesystem::current_path(before); }

  // Opens a log, tells something, and gives the warnings on the way.
  Texts Run(std::vector<std::string> const& filesToRead) {
    RecordingListener listener;
    RunLog const log(RunLog::Read, filesToRead);
    isWriting = log.IsWriting();
    Texts const texts = listener.Texts();
    VRELInfo::Printf("told");
    return texts;
  }

  static std::string Refusal(std::string const& obstacle) {
    return "brivet_read.log: expected a log that can be written, found: " + obstacle +
           "; the run goes on without a log";
  }

  ScratchDirectory folder;
  std::filesystem::path before;
  bool isWriting = false;
};

}  // namespace

TEST_F(RunLogTest, WritesALogOfItsOwn) {
  folder.Write("brivet_read.log", "the run before, which told more");
  EXPECT_EQ(Run({"missing.stp", folder.Path()}), Texts{});
  EXPECT_TRUE(isWriting);
  EXPECT_EQ(folder.Read("brivet_read.log"), "Message : told\n");
  VRELInfo::Printf("behind its end");
  EXPECT_EQ(folder.Read("brivet_read.log"), "Message : told\n");
}

TEST_F(RunLogTest, IsLeftOutOnAFullDisk) {
  ASSERT_EQ(symlink("/dev/full", "brivet_read.log"), 0);
  EXPECT_EQ(Run({}), Texts{Refusal("No space left on device")});
  EXPECT_FALSE(isWriting);
}

TEST_F(RunLogTest, IsLeftOutWhereADirectoryStands) {
  folder.Write("brivet_read.log/file", "");
  EXPECT_EQ(Run({}), Texts{Refusal("Is a directory")});
  EXPECT_FALSE(isWriting);
}

TEST_F(RunLogTest, DoesNotWaitForAPipe) {
  ASSERT_EQ(mkfifo("brivet_read.log", 0600), 0);
  EXPECT_EQ(Run({}), Texts{Refusal("No such device or address")});
  EXPECT_FALSE(isWriting);
}

TEST_F(RunLogTest, GoesToADeviceThatForgets) {
  ASSERT_EQ(symlink("/dev/null", "brivet_read.log"), 0);
  EXPECT_EQ(Run({"/dev/null"}), Texts{});
  EXPECT_TRUE(isWriting);
}

TEST_F(RunLogTest, IsLeftOutWhereTheFolderCannotBeWritten) {
  ASSERT_EQ(chmod(folder.Path().c_str(), 0555), 0);
  RunUnprivileged([this] {
    EXPECT_EQ(Run({}), Texts{Refusal("Permission denied")});
    EXPECT_FALSE(isWriting);
  });
  EXPECT_FALSE(folder.Has("brivet_read.log"));
}

// By its own name or by another one.
TEST_F(RunLogTest, SparesTheFilesThatAreRead) {
  folder.Write("brivet_read.log", "a document");
  ASSERT_EQ(link("brivet_read.log", "hard.stp"), 0);
  ASSERT_EQ(symlink("brivet_read.log", "soft.stp"), 0);
  for (char const* name : {"brivet_read.log", "./brivet_read.log", "hard.stp", "soft.stp"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(Run({"missing.stp", name}), Texts{Refusal("a file of this run; rename it to get a log")});
    EXPECT_FALSE(isWriting);
    EXPECT_EQ(folder.Read("brivet_read.log"), "a document");
  }
}

// It is only now that the name stands for a file.
TEST_F(RunLogTest, SparesAFileThatIsStillToBeWritten) {
  EXPECT_EQ(Run({"./brivet_read.log"}), Texts{Refusal("a file of this run; rename it to get a log")});
  EXPECT_FALSE(folder.Has("brivet_read.log"));
}

TEST_F(RunLogTest, WritesTheOtherHalf) {
  {
    RunLog const read(RunLog::Read, {});
    VRELInfo::Printf("first");
    RunLog const write(RunLog::Write, {});
    VRELInfo::Printf("second");
  }
  EXPECT_EQ(folder.Read("brivet_read.log"), "Message : first\nMessage : second\n");
  EXPECT_EQ(folder.Read("brivet_write.log"), "Message : second\n");
}

TEST_F(RunLogTest, RemovesTheLogOfAnEarlierRun) {
  folder.Write("brivet_read.log", "r");
  folder.Write("brivet_write.log", "w");
  RunLog::RemoveOld(RunLog::Write, {"missing.stp"});
  EXPECT_TRUE(folder.Has("brivet_read.log"));
  EXPECT_FALSE(folder.Has("brivet_write.log"));
  RunLog::RemoveOld(RunLog::Write, {});
  // Nothing that is no log goes.
  folder.Write("brivet_write.log", "a document");
  RunLog::RemoveOld(RunLog::Write, {"brivet_write.log"});
  EXPECT_EQ(folder.Read("brivet_write.log"), "a document");
  ASSERT_EQ(rename("brivet_write.log", "a.stp"), 0);
  ASSERT_EQ(symlink("a.stp", "brivet_write.log"), 0);
  RunLog::RemoveOld(RunLog::Write, {});
  EXPECT_TRUE(folder.Has("brivet_write.log"));
}
