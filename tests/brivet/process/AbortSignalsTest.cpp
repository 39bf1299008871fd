#include "AbortSignals.h"

#include <gtest/gtest.h>

#include <csignal>

#include "ChildProcess.h"
#include "Gk_ErrMgr.h"

TEST(AbortSignalsTest, AskForAnAbortAndThenEndTheProgram) {
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

TEST(AbortSignalsTest, StayIgnoredWhereTheyAre) {
  EXPECT_EQ(RunInChild([] {
              std::signal(SIGHUP, SIG_IGN);
              AbortOnSignals();
              raise(SIGHUP);
              return Gk_ErrMgr::shouldAbort() ? 1 : 0;
            }).exitStatus,
            0);
}
