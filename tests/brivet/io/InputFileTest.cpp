#include "InputFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <string>

#include "ChildProcess.h"
#include "FileError.h"
#include "OpenDescriptors.h"
#include "ScratchDirectory.h"
#include "TestDocument.h"

namespace {

long CodeOf(std::string const& path) {
  try {
    InputFile file(path);
    char block[16];
    file.Read(block, sizeof block);
  } catch (FileError const& error) {
    EXPECT_EQ(error.message.rfind("cannot ", 0), 0U) << error.message;
    EXPECT_EQ(error.hint, "");
    return error.result;
  }
  return VREL_S_OK;
}

volatile std::sig_atomic_t alarms = 0;
int fifo = -1;

// The third alarm writes the byte that the reader waits for.
void CountAlarm(int) {
  alarms = alarms + 1;
  if (alarms == 3 && write(fifo, "x", 1) != 1) _exit(1);
}

}  // namespace

TEST(InputFileTest, ReadReturnsBytesUnchanged) {
  std::string const path = testing::TempDir() + "brivet_input_file";
  std::FILE* const written = std::fopen(path.c_str(), "wb");
  ASSERT_NE(written, nullptr);
  std::fwrite("a\r\n\0\xFF", 1, 5, written);
  std::fclose(written);

  InputFile file(path);
  char block[4];
  ASSERT_EQ(file.Read(block, sizeof block), 4U);
  EXPECT_EQ(std::string(block, 4), std::string("a\r\n\0", 4));
  ASSERT_EQ(file.Read(block, sizeof block), 1U);
  EXPECT_EQ(block[0], '\xFF');
  EXPECT_EQ(file.Read(block, sizeof block), 0U);
  std::remove(path.c_str());
}

TEST(InputFileTest, ReportsUnreadableFiles) {
  EXPECT_EQ(CodeOf("/nowhere/at/all.stp"), VREL_E_FILE_NOT_FOUND);
  EXPECT_EQ(CodeOf(BracketPath() + "/part.stp"), VREL_E_FILE_NOT_FOUND);
  EXPECT_EQ(CodeOf(""), VREL_E_FILE_NOT_FOUND);
  EXPECT_EQ(CodeOf(std::string(5000, 'a')), VREL_E_FILE_OPEN);
  EXPECT_EQ(CodeOf(testing::TempDir()), VREL_E_FILE_OPEN);
}

TEST(InputFileTest, ReportsMissingPermission) {
  std::string const path = testing::TempDir() + "brivet_locked_file";
  int const created = open(path.c_str(), O_CREAT | O_WRONLY, 0);
  ASSERT_GE(created, 0);
  close(created);
  // Root may read everything, so that the child becomes another user.
  ChildResult const result = RunInChildWithoutTeardown([&path] {
    constexpr uid_t kUser = 65534;
    if (geteuid() == 0 && setuid(kUser) != 0) return 1;
    return CodeOf(path) == VREL_E_FILE_OPEN ? 0 : 2;
  });
  EXPECT_EQ(result.exitStatus, 0);
  std::remove(path.c_str());
}

TEST(InputFileTest, DestructorClosesFile) {
  {
    InputFile const file(BracketPath());
    EXPECT_EQ(CountOpenDescriptors(BracketPath()), 1);
  }
  EXPECT_EQ(CountOpenDescriptors(BracketPath()), 0);
}

TEST(InputFileTest, ReadContinuesAfterSignal) {
  ScratchDirectory const directory;
  std::string const path = directory.Path("fifo");
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  fifo = open(path.c_str(), O_RDWR);
  ASSERT_GE(fifo, 0);
  alarms = 0;
  InputFile file(path);
  struct sigaction interrupting = {};
  struct sigaction old = {};
  interrupting.sa_handler = CountAlarm;
  sigaction(SIGALRM, &interrupting, &old);
  itimerval const often = {{0, 20000}, {0, 20000}};
  itimerval const never = {};
  setitimer(ITIMER_REAL, &often, nullptr);
  char block[4];
  std::size_t count = 0;
  EXPECT_NO_THROW(count = file.Read(block, sizeof block));
  setitimer(ITIMER_REAL, &never, nullptr);
  sigaction(SIGALRM, &old, nullptr);
  close(fifo);
  EXPECT_EQ(count, 1U);
  EXPECT_GE(alarms, 3);
}
