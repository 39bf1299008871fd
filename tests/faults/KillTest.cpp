// The program is killed, or asked to stop, at a random moment.
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

constexpr int KILLS = 200;

// Over the same document time and again; signals of the list take turns.
void Kill(std::vector<int> const& signals, int count, unsigned seed) {
  Names const words = {"large.stp", "new.html"};
  FaultyRun const run(words, LargeFaultDocument(34000));
  ASSERT_EQ(run.Undisturbed().exitStatus, 0) << run.Undisturbed().errors;
  // Some come while the program starts, and some behind its end.
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
    // Before the program looks out for signals, one ends it; so does a kill at any time, and it may fall between the
    // moment when the output has a name and the one when it takes its place.
    bool const mayDie = result.signal == signal;
    EXPECT_TRUE(mayDie || (result.signal == 0 && (result.exitStatus == 0 || result.exitStatus == 3)))
        << result.signal << " " << result.exitStatus << result.errors;
    EXPECT_TRUE(run.IsSoundStopped(result, signal == SIGKILL));
    if (testing::Test::HasFailure()) return;
  }
  for (auto const& [end, times] : ends) std::printf("signal %d, status %d: %d times\n", end.first, end.second, times);
}

}  // namespace

TEST(KillTest, KilledAtOnceItLeavesWholeFiles) {
  Kill({SIGKILL}, KILLS / 2, 1);
}

TEST(KillTest, AskedToStopItCleansUp) {
  Kill({SIGTERM, SIGINT}, KILLS / 2, 2);
}
