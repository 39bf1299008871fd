#include "AbortSignals.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>

#include "ChildProcess.h"
#include "Gk_ErrMgr.h"
#include "ScratchDirectory.h"

TEST(AbortSignalsTest, FirstSignalAbortsSecondEndsProgram) {
  for (int const signal : {SIGINT, SIGTERM, SIGHUP}) {
    SCOPED_TRACE(signal);
    EXPECT_EQ(RunInChild([signal] {
                AbortOnSignals();
                if (Gk_ErrMgr::shouldAbort()) return 1;
                raise(signal);
                return Gk_ErrMgr::shouldAbort() ? 0 : 2;
              }).exitStatus,
              0);
    EXPECT_EQ(RunInChildWithoutTeardown([signal] {
                AbortOnSignals();
                raise(signal);
                raise(signal);
                return 0;
              }).signal,
              signal);
  }
}

TEST(AbortSignalsTest, IgnoredSignalsStayIgnored) {
  EXPECT_EQ(RunInChild([] {
              std::signal(SIGHUP, SIG_IGN);
              AbortOnSignals();
              raise(SIGHUP);
              return Gk_ErrMgr::shouldAbort() ? 1 : 0;
            }).exitStatus,
            0);
}

TEST(AbortSignalsTest, WriteBeyondFileSizeLimitFails) {
  ScratchDirectory const folder;
  std::string const path = folder.Path("file");
  EXPECT_EQ(RunInChildWithoutTeardown([&path] {
              IgnoreFileSizeSignal();
              rlimit const limit = {10, 10};
              int const descriptor = open(path.c_str(), O_WRONLY | O_CREAT, 0600);
              if (setrlimit(RLIMIT_FSIZE, &limit) != 0 || write(descriptor, "0123456789", 10) != 10) return 1;
              return write(descriptor, "x", 1) == -1 && errno == EFBIG ? 0 : 2;
            }).exitStatus,
            0);
}
