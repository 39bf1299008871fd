#include "LogStream.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "ScratchDirectory.h"

namespace {

class LogStreamTest : public testing::Test {
 protected:
  int Open() const { return open(folder.Path("log").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600); }
  std::string Log() const { return folder.Read("log"); }

  static void Write(LogStream& stream, std::string const& text) {
    EXPECT_EQ(stream.write(text.data(), static_cast<int>(text.size())), static_cast<int>(text.size()));
  }

  ScratchDirectory folder;
};

}  // namespace

TEST_F(LogStreamTest, WritesCompleteLines) {
  LogStream stream(Open());
  Write(stream, "Input");
  Write(stream, " File : ");
  EXPECT_EQ(Log(), "");
  Write(stream, "bolt.stp");
  Write(stream, "\nOutput");
  EXPECT_EQ(Log(), "Input File : bolt.stp\n");
  Write(stream, " File\n\nthird\n");
  EXPECT_EQ(Log(), "Input File : bolt.stp\nOutput File\n\nthird\n");
}

TEST_F(LogStreamTest, DestructorCompletesLastLine) {
  {
    LogStream stream(Open());
    Write(stream, "one\ntwo");
    stream.flush();
    stream.close();
    EXPECT_EQ(Log(), "one\n");
    Write(stream, ", three");
  }
  EXPECT_EQ(Log(), "one\ntwo, three\n");
}

TEST_F(LogStreamTest, AcceptsLongLines) {
  std::string const line(20000, 'x');
  LogStream stream(Open());
  Write(stream, "short\n" + line + "\n" + line + "\n");
  EXPECT_EQ(Log(), "short\n" + line + "\n" + line + "\n");
}

// The limit of 10 bytes for files cuts the second line.
TEST_F(LogStreamTest, RemovesIncompleteLineAndStops) {
  LogStream stream(Open());
  rlimit before;
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  auto const handler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit = before;
  limit.rlim_cur = 10;
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  Write(stream, "first\n");
  Write(stream, "the second\n");
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(Log(), "first\n");
  Write(stream, "third\n");
  EXPECT_EQ(Log(), "first\n");
}
