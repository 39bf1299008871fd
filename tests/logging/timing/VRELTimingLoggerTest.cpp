#include "VRELTimingLogger.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "ChildProcess.h"
#include "RecordingListener.h"
#include "VRELBasePerformanceMonitor.h"
#include "VRELBrivetLibrary.h"
#include "VRELConsoleLogger.h"
#include "VRELEndTaskEvent.h"
#include "VRELEndTranslationTaskEvent.h"
#include "VRELInfo.h"
#include "VRELPerfTrackerStatus.h"
#include "VRELStartConversionStageEvent.h"
#include "VRELStartReadFileTaskEvent.h"
#include "VRELStartTaskEvent.h"
#include "VRELStartTranslateRepairEvent.h"
#include "VirtualSlot.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Lines = std::vector<std::string>;

constexpr char kClosingLine[] = "================= End Timing Performance Summary =================";
constexpr char kNoSeconds[] = "    0.0000     0.0000     0.0000";

// Returns the string right-aligned in 50 columns.
std::string Aligned(std::string const& text) {
  return std::string(50 - std::min<std::size_t>(50, text.size()), ' ') + text;
}

// Returns a row of the summary from its columns after the equals sign.
std::string Row(std::string const& identifier, std::string const& columns) {
  return Aligned(identifier) + " = " + columns;
}

int ListenerCount() {
  return VRELEventBus::GetEventBus()->GetListenerCount();
}

// Monitor that returns the times that the test sets.
class RecordingMonitor : public VRELBasePerformanceMonitor {
 public:
  VRINResult PrintStatistics() override {
    VRELInfo::Printf("statistics");
    return VREL_E_FAIL;
  }
  VRINResult QueryProcessTimes(double& kernel, double& user) override {
    kernel = kernelTime;
    user = userTime;
    return result;
  }
  double kernelTime = 0;
  double userTime = 0;
  VRINResult result = VREL_S_OK;
};

// Logger that receives events with stamps set by the test.
class VRELTimingLoggerTest : public testing::Test {
 protected:
  ~VRELTimingLoggerTest() override {
    VRELTimingLogger::_detailedTaskInfo = false;
    VRELTimingLogger::_pMonitor = nullptr;
  }

  void Start(char const* identifier, long seconds, long ticks) {
    VRELStartTaskEvent event("Start", identifier, VREL_LEVEL_INFO);
    event.SetTime(seconds);
    event.SetClock(ticks);
    logger.HandleEvent(event);
  }
  void End(char const* identifier, long seconds, long ticks) {
    VRELEndTaskEvent event(VREL_S_OK, "End", identifier, VREL_LEVEL_INFO, true);
    event.SetTime(seconds);
    event.SetClock(ticks);
    logger.HandleEvent(event);
  }
  // Runs a task of the given number of ticks.
  void Run(char const* identifier, long ticks) {
    Start(identifier, 100, 5000);
    End(identifier, 100, 5000 + ticks);
  }

  // Returns the texts sent since the last call.
  Lines Taken() {
    Lines const lines = listener.Texts();
    listener.events.clear();
    return lines;
  }

  // Returns what Finalize prints.
  Lines Summary() {
    logger.Initialize();
    Taken();
    logger.Finalize();
    return Taken();
  }

  // Returns the rows of the summary, sorted, and checks the lines around them.
  Lines Rows() {
    Lines lines = Summary();
    if (lines == Lines{kClosingLine}) return {};
    Lines const heading = {
        "                # task = elapsed(s), kernel(s), user(s), cpu=kernel+user(s), #calls ",
        "                #        elapsed= wall clock time", "                #        kernel = system calls time",
        "                #        user   = user code time", "                #        cpu    = actual cpu time"};
    auto const start = std::search(lines.begin(), lines.end(), heading.begin(), heading.end());
    EXPECT_TRUE(start != lines.end() && lines.back() == kClosingLine);
    if (start == lines.end()) return {"no heading"};
    Lines rows(start + static_cast<std::ptrdiff_t>(heading.size()), lines.end() - 1);
    std::sort(rows.begin(), rows.end());
    return rows;
  }

  RecordingListener listener;
  VRELTimingLogger logger;
};

TEST_F(VRELTimingLoggerTest, InitializeAddsListenerOnce) {
  EXPECT_EQ(ListenerCount(), 1);
  logger.Initialize();
  EXPECT_EQ(ListenerCount(), 2);
  EXPECT_THAT(Taken(), ElementsAre("Task Timing On"));
  logger.Initialize();
  EXPECT_EQ(ListenerCount(), 2);
  EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(VRELTimingLoggerTest, FinalizePrintsAndRemovesListener) {
  logger.Initialize();
  Taken();
  logger.Finalize();
  EXPECT_EQ(ListenerCount(), 1);
  EXPECT_THAT(Taken(), ElementsAre(kClosingLine));
  logger.Finalize();
  EXPECT_THAT(Taken(), IsEmpty());
  logger.Initialize();
  EXPECT_THAT(Taken(), ElementsAre("Task Timing On"));
}

TEST_F(VRELTimingLoggerTest, FinalizeRemovesListenerAddedByOthers) {
  VRELEventBus::GetEventBus()->AddListener(&logger);
  logger.Finalize();
  EXPECT_EQ(ListenerCount(), 1);
  EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(VRELTimingLoggerTest, PrintsWholeSummary) {
  Run("Read File", 1500000);
  listener.events.clear();
  logger.Initialize();
  Taken();
  logger.Finalize();
  EXPECT_EQ(listener.events.size(), 7U);
  for (RecordedEvent const& event : listener.events) {
    EXPECT_EQ(event.name, "VRELMessageEvent");
    EXPECT_EQ(event.level, 50);
  }
  EXPECT_THAT(Taken(),
              ElementsAre("                # task = elapsed(s), kernel(s), user(s), cpu=kernel+user(s), #calls ",
                          "                #        elapsed= wall clock time",
                          "                #        kernel = system calls time",
                          "                #        user   = user code time",
                          "                #        cpu    = actual cpu time",
                          "                                         Read File =     1.5000     0.0000     0.0000"
                          "     0.0000        1x",
                          "================= End Timing Performance Summary ================="));
}

TEST_F(VRELTimingLoggerTest, AddsRunsOfTask) {
  Run("Read Entities", 1000000);
  Run("Read Entities", 250000);
  Run("Read Entities", 1);
  EXPECT_THAT(Rows(), ElementsAre(Row("Read Entities", "    1.2500 " + std::string(kNoSeconds) + "        3x")));
}

TEST_F(VRELTimingLoggerTest, ConversionAndTranslationKeepLastRun) {
  for (long const ticks : {1000000L, 3000000L, 2000000L}) {
    Run("Conversion", ticks);
    Run("Translation", ticks + 1000000);
    Run("conversion stage", ticks);
  }
  EXPECT_THAT(Rows(), ElementsAre(Row("Conversion", "    2.0000 " + std::string(kNoSeconds) + "        1x"),
                                  Row("Translation", "    3.0000 " + std::string(kNoSeconds) + "        1x"),
                                  Row("conversion stage", "    6.0000 " + std::string(kNoSeconds) + "        3x")))
      << "sorted by their blanks";
}

TEST_F(VRELTimingLoggerTest, SecondInitializeKeepsRows) {
  Run("Options", 1000000);
  EXPECT_THAT(Rows(), ElementsAre(Row("Options", "    1.0000 " + std::string(kNoSeconds) + "        1x")));
  Run("Options", 1000000);
  EXPECT_THAT(Rows(), ElementsAre(Row("Options", "    2.0000 " + std::string(kNoSeconds) + "        2x")));
}

TEST_F(VRELTimingLoggerTest, WallClockCountsAbove600Seconds) {
  struct {
    long startTime, endTime, startClock, endClock;
    char const* elapsed;
  } const cases[] = {
      {1000, 1600, 0, 2500000, "    2.5000"},
      {1000, 1601, 0, 2500000, "  601.0000"},
      {1000, 1000, 7, 123463, "    0.1235"},
      {1000, 1000, 0, 49, "    0.0000"},
      {1000, 101000, 0, 1, "100000.0000"},
      // The clock was set back.
      {1000, 10, 1000000, 2000000, "    1.0000"},
      {1000, 1000, 2000000, 1000000, "   -1.0000"},
      // The ticks wrapped around.
      {1000, 1000, LONG_MAX, LONG_MIN, "    0.0000"},
      {-300, 301, 0, 0, "  601.0000"},
  };
  for (auto const& each : cases) {
    VRELTimingLogger another;
    VRELStartTaskEvent start("s", "Mesh", VREL_LEVEL_INFO);
    start.SetTime(each.startTime);
    start.SetClock(each.startClock);
    VRELEndTaskEvent end(VREL_S_OK, "e", "Mesh", VREL_LEVEL_INFO, true);
    end.SetTime(each.endTime);
    end.SetClock(each.endClock);
    another.HandleEvent(start);
    another.HandleEvent(end);
    another.Initialize();
    Taken();
    another.Finalize();
    Lines const lines = Taken();
    ASSERT_EQ(lines.size(), 7U);
    EXPECT_EQ(lines[5], Row("Mesh", std::string(each.elapsed) + " " + kNoSeconds + "        1x"));
  }
}

TEST_F(VRELTimingLoggerTest, TasksNest) {
  Start("Translation", 0, 0);
  Start("Read", 0, 1000000);
  Start("Read", 0, 2000000);
  End("Read", 0, 4000000);
  End("Read", 0, 5000000);
  End("Translation", 0, 9000000);
  EXPECT_THAT(Rows(), ElementsAre(Row("Read", "    6.0000 " + std::string(kNoSeconds) + "        2x"),
                                  Row("Translation", "    9.0000 " + std::string(kNoSeconds) + "        1x")));
}

TEST_F(VRELTimingLoggerTest, UnfinishedTaskIsDropped) {
  Start("A", 0, 0);
  Start("B", 0, 0);
  End("A", 0, 1000000);
  End("B", 0, 1000000);
  EXPECT_THAT(Rows(), ElementsAre(Row("A", "    1.0000 " + std::string(kNoSeconds) + "        1x")));
}

TEST_F(VRELTimingLoggerTest, UnknownEndDropsAllTasks) {
  Start("A", 0, 0);
  Start("B", 0, 0);
  End("C", 0, 0);
  End("B", 0, 0);
  End("A", 0, 0);
  EXPECT_THAT(Rows(), IsEmpty());
  End("A", 0, 0);
  EXPECT_THAT(Rows(), IsEmpty());
}

TEST_F(VRELTimingLoggerTest, IdentifiersAreCaseSensitive) {
  Start("Mesh", 0, 0);
  End("mesh", 0, 0);
  EXPECT_THAT(Rows(), IsEmpty());
}

TEST_F(VRELTimingLoggerTest, OpenTasksHaveNoRow) {
  Run("A", 1000000);
  Start("B", 0, 0);
  EXPECT_THAT(Rows(), ElementsAre(Row("A", "    1.0000 " + std::string(kNoSeconds) + "        1x")));
}

TEST_F(VRELTimingLoggerTest, RepairsAreIgnored) {
  VRELTimingLogger::_detailedTaskInfo = true;
  Start("A", 0, 0);
  Taken();
  Start("Repair", 0, 0);
  End("Repair", 0, 1000000);
  VRELStartTranslateRepairEvent repair("Face", "Exact", 7, VREL_LEVEL_VERBOSE);
  repair.SetTime(1);
  logger.HandleEvent(repair);
  EXPECT_THAT(Taken(), IsEmpty());
  End("A", 0, 1000000);
  EXPECT_THAT(Rows(), ElementsAre(Row("A", "    1.0000 " + std::string(kNoSeconds) + "        1x")));
}

TEST_F(VRELTimingLoggerTest, IgnoresUntimedEvents) {
  class Timed : public VRELEvent {
   public:
    Timed() : VRELEvent("Timed", VREL_LEVEL_INFO) {}
    bool IsTimed() override { return true; }
  };
  class OtherKind : public VRELStartTaskEvent {
   public:
    explicit OtherKind(int taskKind) : VRELStartTaskEvent("Other", "A", VREL_LEVEL_INFO), kind(taskKind) {}
    int GetKind() override { return kind; }

   private:
    int kind;
  };
  class Untimed : public VRELEndTaskEvent {
   public:
    Untimed() : VRELEndTaskEvent(VREL_S_OK, "Untimed", "C", VREL_LEVEL_INFO, true) {}
    bool IsTimed() override { return false; }
  };
  VRELTimingLogger::_detailedTaskInfo = true;
  Start("A", 0, 0);
  Taken();
  Timed timed;
  timed.SetTime(1);
  VRELEvent plain("Plain", VREL_LEVEL_INFO);
  plain.SetTime(1);
  VRELStartConversionStageEvent stage("Face", 1, 2, true);
  stage.SetTime(1);
  VRELStartTaskEvent start("Not stamped", "B", VREL_LEVEL_INFO);
  VRELEndTaskEvent end(VREL_S_OK, "Not stamped", "C", VREL_LEVEL_INFO, true);
  OtherKind above(2);
  above.SetTime(1);
  OtherKind below(-1);
  below.SetTime(1);
  Untimed untimed;
  untimed.SetTime(1);
  for (VRELEvent* const event :
       std::vector<VRELEvent*>{&timed, &plain, &stage, &start, &end, &above, &below, &untimed}) {
    logger.HandleEvent(*event);
  }
  EXPECT_THAT(Taken(), IsEmpty());
  End("A", 0, 1000000);
  EXPECT_THAT(Rows(), ElementsAre(Row("A", "    1.0000 " + std::string(kNoSeconds) + "        1x")));
}

TEST_F(VRELTimingLoggerTest, PrintsDetailsOfTasks) {
  VRELTimingLogger::_detailedTaskInfo = true;
  Start("Read File", 0, 0);
  EXPECT_THAT(Taken(), ElementsAre("***************************Read File Started***************************"));
  End("Read File", 0, 1234567);
  EXPECT_THAT(Taken(), ElementsAre("***************************Read File Ending***************************",
                                   "                            Read File Elapsed Time =     1.2346 seconds. "));
  End("Read File", 0, 1234567);
  EXPECT_THAT(Taken(), ElementsAre("***************************Read File Ending***************************"));
  VRELTimingLogger::_detailedTaskInfo = false;
  Run("Read File", 1);
  EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(VRELTimingLoggerTest, PercentSignsArePrintedVerbatim) {
  VRELTimingLogger::_detailedTaskInfo = true;
  Run("100%s %n", 2000000);
  EXPECT_THAT(Taken(), ElementsAre("***************************100%s %n Started***************************",
                                   "***************************100%s %n Ending***************************",
                                   Aligned("100%s %n Elapsed Time") + " =     2.0000 seconds. "));
  EXPECT_THAT(Rows(), ElementsAre(Row("100%s %n", "    2.0000 " + std::string(kNoSeconds) + "        1x")));
}

TEST_F(VRELTimingLoggerTest, OverlongIdentifierIsTruncated) {
  VRELTimingLogger::_detailedTaskInfo = true;
  std::string const identifier(5000, 'x');
  Run(identifier.c_str(), 1);
  EXPECT_THAT(Taken(), ElementsAre(std::string(27, '*') + std::string(996, 'x'),
                                   std::string(27, '*') + std::string(996, 'x'), std::string(1023, 'x')));
  EXPECT_THAT(Rows(), ElementsAre(std::string(1023, 'x')));
}

TEST_F(VRELTimingLoggerTest, AddsTimesOfMonitor) {
  RecordingMonitor monitor;
  VRELTimingLogger::_pMonitor = &monitor;
  monitor.kernelTime = 1;
  monitor.userTime = 10;
  Start("A", 0, 0);
  monitor.kernelTime = 1.25;
  monitor.userTime = 12;
  End("A", 0, 3000000);
  Start("A", 0, 0);
  monitor.kernelTime = 2.25;
  monitor.userTime = 15;
  End("A", 0, 3000000);
  EXPECT_THAT(Taken(), IsEmpty());
  logger.Initialize();
  Taken();
  monitor.userTime = 20;
  logger.Finalize();
  EXPECT_THAT(Taken(),
              ElementsAre("================ Start Memory Performance Summary ================", "statistics",
                          "================= End Memory Performance Summary =================",
                          "================ Start Timing Performance Summary ================",
                          "                            Process total CPU Time =    22.2500 seconds",
                          "                # task = elapsed(s), kernel(s), user(s), cpu=kernel+user(s), #calls ",
                          "                #        elapsed= wall clock time",
                          "                #        kernel = system calls time",
                          "                #        user   = user code time",
                          "                #        cpu    = actual cpu time",
                          Row("A", "    6.0000     1.2500     5.0000     6.2500        2x"),
                          "================= End Timing Performance Summary ================="));
}

TEST_F(VRELTimingLoggerTest, PrintsDetailsOfMonitor) {
  RecordingMonitor monitor;
  VRELTimingLogger::_pMonitor = &monitor;
  VRELTimingLogger::_detailedTaskInfo = true;
  Start("A", 0, 0);
  monitor.kernelTime = 0.5;
  monitor.userTime = 2.25;
  Taken();
  End("A", 0, 3000000);
  EXPECT_THAT(Taken(), ElementsAre("***************************A Ending***************************",
                                   Aligned("A Elapsed Time") + " =     3.0000 seconds. ",
                                   Aligned("A Kernel Time") + " =     0.5000 seconds",
                                   Aligned("A User Time") + " =     2.2500 seconds",
                                   Aligned("A CPU Time") + " =     2.7500 seconds",
                                   "================ Start Task Performance Info ================", "statistics",
                                   "================= End Task Performance Info ================="));
}

TEST_F(VRELTimingLoggerTest, FailedQueryLeavesColumnsZero) {
  RecordingMonitor monitor;
  VRELTimingLogger::_pMonitor = &monitor;
  VRELTimingLogger::_detailedTaskInfo = true;
  monitor.kernelTime = 5;
  monitor.userTime = 5;
  monitor.result = VREL_E_FAIL;
  Start("A", 0, 0);
  Taken();
  End("A", 0, 3000000);
  EXPECT_THAT(Taken(), ElementsAre("***************************A Ending***************************",
                                   Aligned("A Elapsed Time") + " =     3.0000 seconds. ",
                                   "================ Start Task Performance Info ================", "statistics",
                                   "================= End Task Performance Info ================="));
  // The query succeeds at the end only: the start counts as 0.
  Start("B", 0, 0);
  monitor.result = VREL_S_PARTIAL;
  End("B", 0, 0);
  EXPECT_THAT(Rows(), ElementsAre(Row("A", "    3.0000 " + std::string(kNoSeconds) + "        1x"),
                                  Row("B", "    0.0000     5.0000     5.0000    10.0000        1x")));
  // The summary query fails too.
  monitor.result = VREL_E_FAIL;
  Lines const summary = Summary();
  EXPECT_EQ(summary.size(), 4U + 5 + 2 + 1);
  EXPECT_EQ(
      std::count(summary.begin(), summary.end(), Row("B", "    0.0000 " + std::string(kNoSeconds) + "        1x")), 1);
}

TEST_F(VRELTimingLoggerTest, SummaryWithoutTasksPrintsMonitor) {
  RecordingMonitor monitor;
  VRELTimingLogger::_pMonitor = &monitor;
  monitor.kernelTime = 1;
  monitor.userTime = 2;
  EXPECT_THAT(Summary(), ElementsAre("================ Start Memory Performance Summary ================", "statistics",
                                     "================= End Memory Performance Summary =================",
                                     "================ Start Timing Performance Summary ================",
                                     "                            Process total CPU Time =     3.0000 seconds",
                                     "================= End Timing Performance Summary ================="));
}

TEST_F(VRELTimingLoggerTest, DeletedMonitorLeavesTimesZero) {
  auto monitor = std::make_unique<RecordingMonitor>();
  VRELTimingLogger::_pMonitor = monitor.get();
  Start("A", 0, 0);
  monitor->userTime = 2;
  End("A", 0, 1000000);
  Start("A", 0, 0);
  monitor.reset();
  End("A", 0, 1000000);
  EXPECT_THAT(Rows(), ElementsAre(Row("A", "    2.0000 " + std::string(kNoSeconds) + "        2x")));
}

TEST_F(VRELTimingLoggerTest, DestructorFinalizesAndClearsMonitor) {
  RecordingMonitor monitor;
  auto another = std::make_unique<VRELTimingLogger>();
  another->Initialize();
  EXPECT_EQ(ListenerCount(), 2);
  // Never ended.
  VRELStartTaskEvent start("s", "Mesh", VREL_LEVEL_INFO);
  VRELEventBus::Fire(start);
  Taken();
  VRELTimingLogger::_pMonitor = nullptr;
  another.reset();
  EXPECT_THAT(Taken(), ElementsAre(kClosingLine));
  EXPECT_EQ(ListenerCount(), 1);

  VRELTimingLogger::_pMonitor = &monitor;
  { VRELTimingLogger const idle; }
  EXPECT_EQ(VRELTimingLogger::_pMonitor, nullptr);
  EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(VRELTimingLoggerTest, ConstructorClearsDetailFlag) {
  VRELTimingLogger::_detailedTaskInfo = true;
  VRELTimingLogger const another;
  EXPECT_FALSE(VRELTimingLogger::_detailedTaskInfo);
}

TEST_F(VRELTimingLoggerTest, DestructorDropsExceptions) {
  class Throwing : public VRELEventListener {
   public:
    void HandleEvent(VRELEvent&) override { throw std::runtime_error("no space left"); }
  } throwing;
  auto activeLogger = std::make_unique<VRELTimingLogger>();
  activeLogger->Initialize();
  VRELEventBus::GetEventBus()->AddListener(&throwing);
  EXPECT_THROW(activeLogger->Finalize(), std::runtime_error);
  EXPECT_EQ(ListenerCount(), 3);
  activeLogger.reset();
  EXPECT_EQ(ListenerCount(), 2);
  VRELEventBus::GetEventBus()->RemoveListener(&throwing);
}

TEST_F(VRELTimingLoggerTest, KeepsSlotsAndSize) {
  EXPECT_TRUE((std::is_base_of_v<VRELEventListener, VRELTimingLogger>));
  EXPECT_EQ(SlotOf(&VRELTimingLogger::HandleEvent), 0U);
  EXPECT_EQ(sizeof(VRELTimingLogger),
            sizeof(void*) + sizeof(void*) + sizeof(VRELStack) + sizeof(VRELHashMap<VRELString, VRELTaskOccurenceInfo>));
}

// The logger of the process is only set up in child processes.

constexpr char const* kUnset = nullptr;

// Runs `body` in a child process with the variables set, or unset for null. Reports failures only.
ChildResult RunWithVariables(char const* timing, char const* detail, std::function<void()> const& body) {
  return RunInChild([&] {
    unsetenv("VRELTaskTiming");
    unsetenv("VRELTaskInfoDetailed");
    unsetenv("VRELConsoleTracesLevel");
    if (timing != nullptr) setenv("VRELTaskTiming", timing, 1);
    if (detail != nullptr) setenv("VRELTaskInfoDetailed", detail, 1);
    body();
    return testing::Test::HasFailure() ? 1 : 0;
  });
}

void ExpectSuccess(ChildResult const& child) {
  EXPECT_EQ(child.exitStatus, 0) << child.output << child.errors;
  EXPECT_EQ(child.signal, 0);
}

TEST(VRELTimingLoggerProcessTest, SetUpLeavesTimerOffByDefault) {
  for (char const* const value : {kUnset, "", "No", "false", "OFF", "1", "2", "Yes ", "maybe", "100%s"}) {
    SCOPED_TRACE(value == nullptr ? "(unset)" : value);
    ExpectSuccess(RunWithVariables(value, "Yes", [] {
      RecordingListener const listener;
      VRELTimingLogger::SetUp();
      EXPECT_FALSE(VRELTimingLogger::_isTimerOn);
      EXPECT_FALSE(VRELTimingLogger::_detailedTaskInfo);
      EXPECT_FALSE(VRELPerfTrackerStatus::instance.IsPerfTracking());
      EXPECT_EQ(ListenerCount(), 1);
      VRELStartTaskEvent::Fire("s", "Mesh", VREL_LEVEL_INFO);
      EXPECT_THAT(listener.Texts(), IsEmpty());
      // Is sent without tracking.
      VRELStartReadFileTaskEvent::Fire("wheel.step");
      EXPECT_EQ(listener.events.size(), 1U);
      VRELTimingLogger::Stop();
      EXPECT_EQ(listener.events.size(), 1U);
    }));
  }
}

TEST(VRELTimingLoggerProcessTest, SetUpReadsEnvironment) {
  for (char const* const value : {"Yes", "true", "ON"}) {
    ExpectSuccess(RunWithVariables(value, kUnset, [] {
      RecordingListener const listener;
      VRELTimingLogger::SetUp();
      EXPECT_TRUE(VRELTimingLogger::_isTimerOn);
      EXPECT_FALSE(VRELTimingLogger::_detailedTaskInfo);
      EXPECT_TRUE(VRELPerfTrackerStatus::instance.IsPerfTracking());
      EXPECT_EQ(ListenerCount(), 2);
      EXPECT_THAT(listener.Texts(), ElementsAre("Task Timing On"));
      // Printed once.
      VRELTimingLogger::SetUp();
      EXPECT_EQ(listener.events.size(), 1U);
    }));
  }
}

TEST(VRELTimingLoggerProcessTest, SetUpReadsDetailVariable) {
  struct {
    char const* value;
    bool before;
    bool after;
  } const cases[] = {
      {nullptr, false, false}, {nullptr, true, true}, {"Yes", false, true},  {"on", false, true},
      {"No", true, false},     {"1", true, false},    {"text", true, false}, {"", true, false},
  };
  for (auto const& each : cases) {
    SCOPED_TRACE(each.value == nullptr ? "(unset)" : each.value);
    ExpectSuccess(RunWithVariables("Yes", each.value, [&] {
      VRELTimingLogger::_detailedTaskInfo = each.before;
      VRELTimingLogger::SetUp();
      EXPECT_EQ(VRELTimingLogger::_detailedTaskInfo, each.after);
    }));
  }
}

TEST(VRELTimingLoggerProcessTest, StopDoesNothingIfOff) {
  ExpectSuccess(RunWithVariables(kUnset, kUnset, [] {
    VRELTimingLogger::_timer.Initialize();
    VRELBasePerformanceMonitor monitor;
    VRELBasePerformanceMonitor::Install(&monitor, new VRELBrivetLibrary("VRELTestNoSuchModule", "", ""));
    RecordingListener const listener;
    VRELTimingLogger::Stop();
    // Not even an attempt to load the module.
    EXPECT_THAT(listener.Texts(), IsEmpty());
    EXPECT_EQ(ListenerCount(), 2);
  }));
}

TEST(VRELTimingLoggerProcessTest, MeasuresFiredEvents) {
  ExpectSuccess(RunWithVariables("Yes", kUnset, [] {
    RecordingListener listener;
    VRELTimingLogger::SetUp();
    VRELStartTaskEvent::Fire("s", "Translation", VREL_LEVEL_INFO);
    VRELStartTaskEvent::Fire("s", "Mesh", VREL_LEVEL_DEBUG);
    std::clock_t const start = std::clock();
    while (std::clock() - start < 60000) {
    }
    VRELEndTaskEvent::Fire(VREL_S_OK, "e", "Mesh", VREL_LEVEL_DEBUG, true);
    VRELEndTranslationTaskEvent::Fire(VREL_S_OK, false);
    listener.events.clear();
    VRELTimingLogger::Stop();
    Lines const lines = listener.Texts();
    ASSERT_EQ(lines.size(), 8U);
    for (std::string const identifier : {"Mesh", "Translation"}) {
      auto const row = std::find_if(lines.begin(), lines.end(), [&](std::string const& line) {
        return line.rfind(Aligned(identifier) + " = ", 0) == 0;
      });
      ASSERT_NE(row, lines.end()) << identifier;
      double const elapsed = std::strtod(row->c_str() + 53, nullptr);
      EXPECT_GE(elapsed, 0.06);
      EXPECT_LT(elapsed, 60);
      EXPECT_EQ(row->substr(row->size() - 9), "       1x");
    }
    EXPECT_EQ(ListenerCount(), 1);
    // Still sent, but not received.
    VRELStartTaskEvent::Fire("s", "Mesh", VREL_LEVEL_DEBUG);
    EXPECT_EQ(listener.events.back().name, "s");
    listener.events.clear();
    VRELTimingLogger::Stop();
    EXPECT_THAT(listener.Texts(), IsEmpty());
  }));
}

// Returns a pattern in which digits, and blanks before them, match any digit.
std::string Masked(std::string line) {
  for (char& c : line) {
    if (c >= '0' && c <= '9') c = '0';
  }
  return line;
}

TEST(VRELTimingLoggerProcessTest, PrintsTimesOfRealMonitor) {
  ExpectSuccess(RunWithVariables("Yes", "Yes", [] {
    VRELTimingLogger::SetUp();
    VRELBrivetLibrary module("VRELTestMonitor", "InitializeModule", "");
    ASSERT_EQ(module.Load(), VREL_S_OK);
    VRELStartTaskEvent::Fire("s", "Mesh", VREL_LEVEL_INFO);
    std::clock_t const start = std::clock();
    while (std::clock() - start < 200000) {
    }
    RecordingListener listener;
    VRELEndTaskEvent::Fire(VREL_S_OK, "e", "Mesh", VREL_LEVEL_INFO, true);
    std::string text;
    for (std::string const& line : listener.Texts()) text += Masked(line) + "\n";
    // The listener was added last: it receives the event after what the timer prints.
    EXPECT_EQ(text, "***************************Mesh Ending***************************\n" +
                        Aligned("Mesh Elapsed Time") + " =     0.0000 seconds. \n" + Aligned("Mesh Kernel Time") +
                        " =     0.0000 seconds\n" + Aligned("Mesh User Time") + " =     0.0000 seconds\n" +
                        Aligned("Mesh CPU Time") +
                        " =     0.0000 seconds\n"
                        "================ Start Task Performance Info ================\n"
                        "statistics of VRELTestMonitor\n"
                        "================= End Task Performance Info =================\n"
                        "(none)\n");
    listener.events.clear();
    VRELTimingLogger::Stop();
    Lines const lines = listener.Texts();
    ASSERT_EQ(lines.size(), 4U + 1 + 5 + 1 + 1 + 1);
    EXPECT_EQ(lines[1], "statistics of VRELTestMonitor");
    EXPECT_EQ(lines[4].rfind(Aligned("Process total CPU Time") + " = ", 0), 0U) << lines[4];
    double elapsed = 0;
    double kernel = 0;
    double user = 0;
    double cpu = 0;
    int count = 0;
    ASSERT_EQ(std::sscanf(lines[10].c_str(), " Mesh = %lf %lf %lf %lf %dx", &elapsed, &kernel, &user, &cpu, &count), 5);
    EXPECT_GE(elapsed, 0.2);
    EXPECT_GT(cpu, 0.1);
    EXPECT_NEAR(cpu, kernel + user, 0.0002);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(lines[12], "VRELTestMonitor terminates");
    EXPECT_EQ(VRELTimingLogger::_pMonitor, nullptr);
    EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), nullptr);
  }));
}

// The timer is destroyed before the console that prints its summary.
TEST(VRELTimingLoggerProcessTest, PrintsSummaryAtExit) {
  ChildResult const child = RunWithVariables("Yes", kUnset, [] {
    VRELConsoleLogger::SetUp(VREL_LEVEL_INFO);
    VRELTimingLogger::SetUp();
    VRELStartTaskEvent::Fire("s", "Mesh", VREL_LEVEL_INFO);
    // Is destroyed first.
    static RecordingMonitor monitor;
    VRELTimingLogger::_pMonitor = &monitor;
  });
  ExpectSuccess(child);
  EXPECT_EQ(child.output,
            "Message : Task Timing On\n"
            "Message : ================= End Timing Performance Summary =================\n");
}

TEST(VRELTimingLoggerProcessTest, PrintsNothingAfterStop) {
  ChildResult const child = RunWithVariables("Yes", kUnset, [] {
    VRELConsoleLogger::SetUp(VREL_LEVEL_INFO);
    VRELTimingLogger::SetUp();
    VRELTimingLogger::Stop();
    VRELInfo::Printf("stopped");
  });
  ExpectSuccess(child);
  EXPECT_EQ(child.output,
            "Message : Task Timing On\n"
            "Message : ================= End Timing Performance Summary =================\n"
            "Message : stopped\n");
}

// The module stays loaded while its monitor can be queried. A static monitor is destroyed with its module.
TEST(VRELTimingLoggerProcessTest, QueriesMonitorOfModuleAtExit) {
  for (bool const isStatic : {false, true}) {
    std::string const name = isStatic ? "VRELTestMonitorBare" : "VRELTestMonitor";
    ChildResult const child = RunWithVariables("Yes", kUnset, [&] {
      VRELConsoleLogger::SetUp(VREL_LEVEL_INFO);
      VRELTimingLogger::SetUp();
      VRELBrivetLibrary module(name.c_str(), "InitializeModule", "");
      EXPECT_EQ(module.Load(), VREL_S_OK);
    });
    ExpectSuccess(child);
    bool const isAsked = child.output.find("Message : statistics of " + name + "\n") != std::string::npos;
    EXPECT_NE(isAsked, isStatic) << child.output;
    EXPECT_NE(child.output.find("End Timing Performance Summary"), std::string::npos) << child.output;
  }
}

}  // namespace
