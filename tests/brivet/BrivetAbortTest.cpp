// Interrupts the program with signals.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <string>
#include <thread>
#include <vector>

#include "BrivetFixture.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using Clock = std::chrono::steady_clock;
using Names = std::vector<std::string>;

// Takes seconds to translate.
std::string LargeDocument() {
  std::string data;
  for (int i = 1; i <= 1000000; ++i) {
    std::string const id = std::to_string(i);
    data.append("#").append(id).append("=ORIENTED_EDGE('',*,*,#").append(id).append(",.F.);\n");
  }
  return DocumentText(data);
}

class BrivetAbortTest : public BrivetFixture {
 protected:
  // Starts the program with its output in the files "output" and "errors".
  void Start(std::vector<std::string> words, int input = -1) {
    words.insert(words.begin(), BRIVET_PROGRAM);
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    process = fork();
    ASSERT_GE(process, 0);
    if (process != 0) return;
    if (chdir(folder.Path().c_str()) != 0) _exit(126);
    setenv("LC_ALL", "C.UTF-8", 1);
    if (input >= 0) dup2(input, STDIN_FILENO);
    dup2(open("output", O_WRONLY | O_CREAT, 0600), STDOUT_FILENO);
    dup2(open("errors", O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
    execv(arguments[0], arguments.data());
    _exit(127);
  }

  // Waits until a log contains the text, for 30 seconds at most.
  void WaitFor(std::string const& log, std::string const& text) const {
    Clock::time_point const end = Clock::now() + std::chrono::seconds(30);
    while (!folder.Has(log) || folder.Read(log).find(text) == std::string::npos) {
      ASSERT_LT(Clock::now(), end) << "no " << text << " in " << log;
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
  }

  // Sends the signal and returns the status of waitpid.
  int StopWith(int signal) const {
    Clock::time_point const sent = Clock::now();
    EXPECT_EQ(kill(process, signal), 0);
    int status = 0;
    EXPECT_EQ(waitpid(process, &status, 0), process);
    // One second, and three for a busy machine.
    EXPECT_LT(Clock::now() - sent, std::chrono::seconds(4));
    return status;
  }

  void ExpectAborted(int status) const {
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 3);
    EXPECT_EQ(folder.Read("output"), "");
    EXPECT_EQ(folder.Read("errors"), "brivet: interrupted\n");
    EXPECT_THAT(Log(), HasSubstr("\nTranslation Result : Aborted\n"));
    EXPECT_THAT(Log(), EndsWith("\n" + std::string(80, '-') + "\nProduct Aborted\n"));
  }

  pid_t process = -1;
};

}  // namespace

TEST_F(BrivetAbortTest, StopsWhileReading) {
  Write("large.stp", LargeDocument());
  for (int const signal : {SIGINT, SIGTERM, SIGHUP}) {
    Start({"large.stp"});
    WaitFor("brivet_read.log", "Source Document Preprocessing Result");
    ExpectAborted(StopWith(signal));
    EXPECT_EQ(Files(), (Names{"brivet_read.log", "errors", "large.stp", "output"}));
    for (char const* name : {"brivet_read.log", "errors", "output"}) unlink(folder.Path(name).c_str());
  }
}

TEST_F(BrivetAbortTest, StopsWhileWriting) {
  Write("large.stp", LargeDocument());
  Write("large.html", "old");
  Start({"large.stp"});
  WaitFor("brivet_write.log", "Target Document Postprocessing Result");
  ExpectAborted(StopWith(SIGINT));
  EXPECT_EQ(folder.Read("large.html"), "old");
  EXPECT_THAT(folder.Read("brivet_write.log"), HasSubstr("Output File \"large.html\" Writing is Aborted\n"));
  EXPECT_THAT(folder.Read("brivet_write.log"), EndsWith("\nProduct Aborted\n"));
  EXPECT_EQ(Files(), (Names{"brivet_read.log", "brivet_write.log", "errors", "large.html", "large.stp", "output"}));
}

TEST_F(BrivetAbortTest, StopsWhileWaitingForInput) {
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
  Start({"-"}, ends[0]);
  ASSERT_EQ(write(ends[1], "ISO-10303-21;", 13), 13);
  WaitFor("brivet_read.log", "Options : 0 set");
  ExpectAborted(StopWith(SIGINT));
  close(ends[0]);
  close(ends[1]);
  EXPECT_FALSE(folder.Has("stdin.html"));
}

// As under nohup.
TEST_F(BrivetAbortTest, KeepsIgnoredSignals) {
  Write("large.stp", LargeDocument());
  std::signal(SIGHUP, SIG_IGN);
  Start({"large.stp", "-list"});
  std::signal(SIGHUP, SIG_DFL);
  WaitFor("brivet_read.log", "Source Document Preprocessing Result");
  ASSERT_EQ(kill(process, SIGHUP), 0);
  int status = 0;
  ASSERT_EQ(waitpid(process, &status, 0), process);
  EXPECT_EQ(status, 0);
  EXPECT_THAT(folder.Read("output"), HasSubstr("\nentity instances     1000000\n"));
}
