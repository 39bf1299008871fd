#ifdef BRIVET_HAS_SHAPE

#include "ShapeProcess.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "Gk_ErrMgr.h"
#include "ScratchDirectory.h"
#include "VRELAbortException.h"

namespace {

// A program that runs a shell script.
class Script {
 public:
  explicit Script(std::string const& commands)
      : path(folder.Write("worker", "#!/bin/sh\n" + commands)), document(folder.Write("part.stp", "content\n")) {
    chmod(path.c_str(), 0755);
  }

  ShapeProcess::Outcome Run(std::string const& request, int seconds = 60, std::size_t limit = 100'000'000) {
    ShapeProcess::Limits limits;
    limits.seconds = seconds;
    return ShapeProcess::Run(path, document, request, limits, [this, limit](std::string_view bytes) {
      output += bytes;
      return output.size() <= limit;
    });
  }

  std::string output;

 private:
  ScratchDirectory folder;
  std::string const path;
  std::string const document;
};

void ExpectOutcome(ShapeProcess::Outcome const& outcome, ShapeProcess::End end, int number) {
  EXPECT_EQ(outcome.end, end);
  EXPECT_EQ(outcome.number, number);
}

}  // namespace

TEST(ShapeProcessTest, PassesRequestAndOutput) {
  Script script("cat \"$1\"; cat; echo errors >&2; exit 3\n");
  std::string const request(300'000, 'x');
  ExpectOutcome(script.Run(request), ShapeProcess::Exited, 3);
  EXPECT_EQ(script.output, "content\n" + request);
}

TEST(ShapeProcessTest, ReportsSignal) {
  Script script("kill -SEGV $$\n");
  ExpectOutcome(script.Run(""), ShapeProcess::Killed, SIGSEGV);
}

TEST(ShapeProcessTest, EndsLoop) {
  Script script("while :; do :; done\n");
  ExpectOutcome(script.Run("", 1), ShapeProcess::TimedOut, 0);
}

TEST(ShapeProcessTest, EndsLoopAfterOutputIsClosed) {
  Script script("exec 1>&-\nwhile :; do :; done\n");
  ExpectOutcome(script.Run("", 1), ShapeProcess::TimedOut, 0);
}

TEST(ShapeProcessTest, EndsFloodThatIsRefused) {
  Script script("exec cat /dev/zero\n");
  ExpectOutcome(script.Run("", 60, 1'000'000), ShapeProcess::Refused, 0);
  EXPECT_LT(script.output.size(), 2'000'000U);
}

TEST(ShapeProcessTest, EndsOnAbort) {
  Script script("while :; do :; done\n");
  Gk_ErrMgr::setAbort();
  EXPECT_THROW(script.Run(""), VRELAbortException);
}

TEST(ShapeProcessTest, ReportsMissingProgram) {
  ExpectOutcome(ShapeProcess::Run("/nosuch/worker", "/dev/null", "", {}, [](std::string_view) { return true; }),
                ShapeProcess::Exited, 127);
}

TEST(ShapeProcessTest, ReportsMissingDocument) {
  ExpectOutcome(ShapeProcess::Run("/bin/true", "/nosuch/part.stp", "", {}, [](std::string_view) { return true; }),
                ShapeProcess::NotStarted, ENOENT);
}

TEST(ShapeProcessTest, LimitsMemory) {
  Script script("ulimit -v\nulimit -c\n");
  ExpectOutcome(script.Run(""), ShapeProcess::Exited, 0);
  EXPECT_EQ(script.output, "8388608\n0\n");
}

TEST(ShapeProcessTest, ClosesOtherFiles) {
  int const copy = fcntl(STDERR_FILENO, F_DUPFD, 200);
  ASSERT_GE(copy, 200);
  std::string const path = "/proc/$$/fd/" + std::to_string(copy);
  Script script("[ -e " + path + " ] && echo open || echo closed\n");
  ExpectOutcome(script.Run(""), ShapeProcess::Exited, 0);
  close(copy);
  EXPECT_EQ(script.output, "closed\n");
}

#endif
