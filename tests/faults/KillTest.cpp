// Kills and interrupts the program at random moments.
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <random>
#include <thread>

#include "FaultyRun.h"

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;

constexpr int kKills = 200;

// Translates the same document `count` times and sends one of the signals each time, in turn.
void Kill(std::vector<int> const& signals, int count, unsigned seed) {
  Names const words = {"large.stp", "new.html"};
  FaultyRun const run(words, LargeFaultDocument(34000));
  ASSERT_EQ(run.Undisturbed().exitStatus, 0) << run.Undisturbed().errors;
  // Some signals arrive during start-up, some after the end.
  Clock::time_point const begin = Clock::now();
  ASSERT_EQ(run.Run({}).exitStatus, 0);
  auto const whole = std::chrono::duration_cast<microseconds>(Clock::now() - begin);
  std::mt19937 random(seed);
  std::map<std::pair<int, int>, int> ends;
  for (int i = 0; i < count; ++i) {
    int const signal = signals[static_cast<std::size_t>(i) % signals.size()];
    microseconds const moment(random() % static_cast<unsigned long>(whole.count() * 11 / 10 + 1));
    run.Reset();
    pid_t const process = run.Start();
    std::this_thread::sleep_for(moment);
    kill(process, signal);
    int status = 0;
    waitpid(process, &status, 0);
    ChildResult const result = run.Collect(status);
    ++ends[{result.signal, result.exitStatus}];
    SCOPED_TRACE("signal " + std::to_string(signal) + " after " + std::to_string(moment.count()) + " us");
    // SIGKILL ends the program at any time, another signal before the handlers are installed. SIGKILL may arrive after
    // the temporary file got its name and before it is renamed.
    bool const isKilled = result.signal == signal;
    EXPECT_TRUE(isKilled || (result.signal == 0 && (result.exitStatus == 0 || result.exitStatus == 3)))
        << result.signal << " " << result.exitStatus << result.errors;
    EXPECT_TRUE(run.IsSoundStopped(result, signal == SIGKILL));
    if (testing::Test::HasFailure()) return;
  }
  for (auto const& [end, times] : ends) std::printf("signal %d, status %d: %d times\n", end.first, end.second, times);
}

}  // namespace

TEST(KillTest, SigkillLeavesCompleteFiles) {
  Kill({SIGKILL}, kKills / 2, 1);
}

TEST(KillTest, SigtermCleansUp) {
  Kill({SIGTERM, SIGINT}, kKills / 2, 2);
}
