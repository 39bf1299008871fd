// System calls of a run fail or transfer fewer bytes than requested.
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <set>

#include "FaultyRun.h"
#include "SystemCalls.h"

namespace {

constexpr int kShort = 0;

bool MayTrace() {
  if (!CanTrace()) return false;
  pid_t const process = fork();
  if (process == 0) _exit(AllowTracing() ? 0 : 1);
  int status = 0;
  waitpid(process, &status, 0);
  return status == 0;
}

SystemCallRun RunWith(FaultyRun const& run, SystemCallFault const& fault, bool withoutUnnamedFiles) {
  run.Reset();
  pid_t const process = run.Start([] {
    if (!AllowTracing()) _exit(126);
  });
  return Trace(process, fault, withoutUnnamedFiles);
}

struct Tally {
  long faults = 0;
  std::map<int, int> ends;
};

void TryCall(FaultyRun const& run, SystemCallFault const& fault, bool withoutUnnamedFiles, Tally& tally) {
  SystemCallRun const traced = RunWith(run, fault, withoutUnnamedFiles);
  if (!traced.hasOccurred) return;
  ChildResult const result = run.Collect(traced.status);
  ++tally.faults;
  ++tally.ends[result.exitStatus];
  EXPECT_TRUE(run.IsSound(result)) << traced.failedCall << ", call " << fault.number << ", error " << fault.error
                                   << (fault.isPermanent ? " permanently" : "");
  // The loader does not repeat a short read.
  if (fault.error == kShort && result.exitStatus != 127) {
    EXPECT_EQ(result.exitStatus, 0) << traced.failedCall << ", call " << fault.number;
  }
}

void TryCalls(std::size_t index, std::vector<int> const& errors, bool isPermanent, long dense, long more,
              bool withoutUnnamedFiles = false) {
  if (!MayTrace()) GTEST_SKIP() << "processes cannot be traced";
  auto const& [name, words] = FaultyRuns()[index];
  SCOPED_TRACE(name);
  FaultyRun const run(words);
  SystemCallRun const whole = RunWith(run, {}, withoutUnnamedFiles);
  ASSERT_TRUE(run.IsSound(run.Collect(whole.status)));
  ASSERT_EQ(whole.status, 0);
  Tally tally;
  for (int const error : errors) {
    // Counted from the end: the first calls are those of the loader and of the locale.
    std::vector<long> numbers = FaultNumbers(whole.count, dense, more);
    for (long& number : numbers) number = whole.count + 1 - number;
    for (long const number : error == kShort ? whole.transfers : numbers) {
      TryCall(run, {number, error, isPermanent}, withoutUnnamedFiles, tally);
      if (testing::Test::HasFailure()) return;
    }
  }
  std::printf("%ld calls of %ld failed; status:", tally.faults, whole.count);
  for (auto const& [status, count] : tally.ends) std::printf(" %d (%d times)", status, count);
  std::printf("\n");
  EXPECT_GT(tally.faults, 10);
}

}  // namespace

TEST(SystemCallFaultsTest, OneFailsWritingPage) {
  TryCalls(0, {EIO, ENOSPC, EINTR}, false, 110, 40);
}

// A short transfer is continued, so that the result does not change.
TEST(SystemCallFaultsTest, OneIsShortWritingPage) {
  TryCalls(0, {kShort}, false, 0, 0);
}

TEST(SystemCallFaultsTest, AllOfOneNameFailWritingPage) {
  TryCalls(0, {EIO, ENOSPC}, true, 60, 40);
}

TEST(SystemCallFaultsTest, OneFailsWithNamedTemporaryFile) {
  TryCalls(0, {EIO, ENOSPC}, false, 80, 0, true);
}

// The document is read in pieces of 4 MiB, and once more when it is written.
TEST(SystemCallFaultsTest, ReadErrorIsNotEndOfFile) {
  if (!MayTrace()) GTEST_SKIP() << "processes cannot be traced";
  FaultyRun const run({"large.stp", "new.html"}, LargeFaultDocument(100000));
  SystemCallRun const whole = RunWith(run, {}, false);
  ASSERT_EQ(whole.status, 0);
  int refused = 0;
  for (long const number : whole.reads) {
    SystemCallRun const traced = RunWith(run, {number, EIO, true}, false);
    ChildResult const result = run.Collect(traced.status);
    EXPECT_TRUE(run.IsSound(result)) << "call " << number;
    EXPECT_NE(result.exitStatus, 21) << "call " << number;
    refused += result.exitStatus == 14 ? 1 : 0;
    if (testing::Test::HasFailure()) return;
  }
  EXPECT_GT(refused, 3);
}

TEST(SystemCallFaultsTest, OneFailsWritingText) {
  TryCalls(1, {EIO, kShort}, false, 60, 20);
}

TEST(SystemCallFaultsTest, OneFailsWritingStep) {
  TryCalls(2, {ENOSPC, kShort}, false, 60, 20);
}

TEST(SystemCallFaultsTest, OneFailsListing) {
  TryCalls(3, {EIO, EINTR, kShort}, false, 60, 20);
}

// At each call after the loader's: also where nothing but the command line is checked.
TEST(SystemCallFaultsTest, SignalEndsRunCleanly) {
  if (!MayTrace()) GTEST_SKIP() << "processes cannot be traced";
  FaultyRun const run({"washer.stp", "new.html"});
  SystemCallRun const whole = RunWith(run, {}, false);
  ASSERT_EQ(whole.status, 0);
  int interrupted = 0;
  for (long number = whole.count / 2; number <= whole.count; ++number) {
    SystemCallFault fault;
    fault.number = number;
    fault.signal = SIGTERM;
    SystemCallRun const traced = RunWith(run, fault, false);
    ChildResult const result = run.Collect(traced.status);
    // The signal ends the process before its handler is installed.
    EXPECT_TRUE(result.signal == SIGTERM || result.exitStatus == 3 || result.exitStatus == 0)
        << traced.failedCall << ", call " << number << ": " << result.signal << " " << result.errors;
    EXPECT_TRUE(run.IsSoundStopped(result, false)) << traced.failedCall << ", call " << number;
    interrupted += result.exitStatus == 3 ? 1 : 0;
    if (testing::Test::HasFailure()) return;
  }
  EXPECT_GT(interrupted, 10);
}

// The file is synchronized before the rename and its folder after it, unless -nosync is given.
TEST(SystemCallFaultsTest, OutputIsSynchronizedAroundRename) {
  if (!MayTrace()) GTEST_SKIP() << "processes cannot be traced";
  auto const synchronization = [](Names const& words) {
    FaultyRun const run(words);
    std::string order;
    for (std::string const& name : RunWith(run, {}, false).names) {
      if (name == "fsync" || name == "rename") order += name + " ";
    }
    return order;
  };
  EXPECT_EQ(synchronization({"washer.stp", "new.html"}), "fsync rename fsync ");
  EXPECT_EQ(synchronization({"-nosync", "washer.stp", "new.html"}), "rename ");
}
