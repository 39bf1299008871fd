#include "VRELTimingLogger.h"

#include <cstdio>
#include <ctime>
#include <string>
#include <string_view>
#include <utility>

#include "VRELBasePerformanceMonitor.h"
#include "VRELEnvironment.h"
#include "VRELEventBus.h"
#include "VRELInfo.h"
#include "VRELPerfTrackerStatus.h"
#include "VRELStringAsciiCharUtil.h"
#include "VRELTaskEvent.h"

// Pairing of start and end events
// ===============================
//
// Open tasks are on a stack. A start event pushes an entry with the stamps of the event. An end event pops entries
// until one has the identifier of the event: entries above it belong to tasks that never ended, and are dropped. If no
// entry matches, the stack ends up empty and no row changes.
//
// The elapsed time is the difference of clock() stamps, which is precise for short tasks. On hosts with a 32-bit long
// clock() wraps around after some 36 minutes, so the difference of time() stamps is used for tasks above 600 seconds.

namespace {

constexpr double kLongTaskSeconds = 600;
constexpr double kTicksPerSecond = 1000000;

struct ProcessTimes {
  double kernel = 0;
  double user = 0;
};

// Returns false if there is no monitor or if its query fails.
bool QueryTimes(ProcessTimes& times) {
  ProcessTimes answer;
  if (VRELTimingLogger::_pMonitor == nullptr) return false;
  if (!VRELTimingLogger::_pMonitor->QueryProcessTimes(answer.kernel, answer.user).IsSuccess()) return false;
  times = answer;
  return true;
}

std::string NarrowText(VRELString const& text) {
  VRELStringAsciiCharUtil const ascii(text, false);
  return ascii == nullptr ? "" : static_cast<char const*>(ascii);
}

bool KeepsOnlyLastRun(VRELString const& identifier) {
  return identifier.view() == u"Conversion" || identifier.view() == u"Translation";
}

double ElapsedSeconds(VRELTaskTimingInfo const& start, VRELTaskTimingInfo const& end) {
  double const wall = std::difftime(static_cast<std::time_t>(end.time), static_cast<std::time_t>(start.time));
  if (wall > kLongTaskSeconds) return wall;
  // clock() wraps around.
  auto const ticks = static_cast<unsigned long>(end.clock) - static_cast<unsigned long>(start.clock);
  return static_cast<double>(static_cast<long>(ticks)) / kTicksPerSecond;
}

void PrintTaskLine(VRELString const& identifier, char const* what) {
  VRELInfo::Printf("***************************%s %s***************************", NarrowText(identifier).c_str(), what);
}

void PrintSeconds(std::string const& key, double seconds) {
  VRELInfo::Printf("%50s = %10.4f seconds", key.c_str(), seconds);
}

void PrintElapsed(VRELString const& identifier, double seconds) {
  char text[400];
  std::snprintf(text, sizeof text, "%10.4f seconds.", seconds);
  VRELInfo::Printf("%50s = %s ", (NarrowText(identifier) + " Elapsed Time").c_str(), text);
}

void PrintTimes(VRELString const& identifier, ProcessTimes const& times) {
  std::string const name = NarrowText(identifier);
  PrintSeconds(name + " Kernel Time", times.kernel);
  PrintSeconds(name + " User Time", times.user);
  PrintSeconds(name + " CPU Time", times.kernel + times.user);
}

// Adds the process times since the start of the task.
void AddTimes(VRELTaskTimingInfo const& start, VRELTaskOccurenceInfo& occurrence) {
  ProcessTimes times;
  if (!QueryTimes(times)) return;
  times.kernel -= start.kernelTime;
  times.user -= start.userTime;
  if (VRELTimingLogger::_detailedTaskInfo) PrintTimes(start.taskName, times);
  occurrence.kernel += times.kernel;
  occurrence.user += times.user;
}

void PrintTaskPerformance() {
  VRELInfo::Printf("================ Start Task Performance Info ================");
  if (VRELTimingLogger::_pMonitor != nullptr) VRELTimingLogger::_pMonitor->PrintStatistics();
  VRELInfo::Printf("================= End Task Performance Info =================");
}

// Returns whether the monitor returned process times.
bool PrintProcessSummary() {
  if (VRELTimingLogger::_pMonitor == nullptr) return false;
  VRELInfo::Printf("================ Start Memory Performance Summary ================");
  VRELTimingLogger::_pMonitor->PrintStatistics();
  VRELInfo::Printf("================= End Memory Performance Summary =================");
  VRELInfo::Printf("================ Start Timing Performance Summary ================");
  ProcessTimes times;
  if (!QueryTimes(times)) return false;
  PrintSeconds("Process total CPU Time", times.kernel + times.user);
  return true;
}

void PrintHeading() {
  VRELInfo::Printf("                # task = elapsed(s), kernel(s), user(s), cpu=kernel+user(s), #calls ");
  VRELInfo::Printf("                #        elapsed= wall clock time");
  VRELInfo::Printf("                #        kernel = system calls time");
  VRELInfo::Printf("                #        user   = user code time");
  VRELInfo::Printf("                #        cpu    = actual cpu time");
}

void PrintRow(VRELString const& identifier, VRELTaskOccurenceInfo const& occurrence, ProcessTimes const& times) {
  VRELInfo::Printf("%50s = %10.4f %10.4f %10.4f %10.4f %8dx", NarrowText(identifier).c_str(), occurrence.elapsed,
                   times.kernel, times.user, times.kernel + times.user, occurrence.count);
}

}  // namespace

VRELBasePerformanceMonitor* VRELTimingLogger::_pMonitor = nullptr;
bool VRELTimingLogger::_isTimerOn = false;
bool VRELTimingLogger::_detailedTaskInfo = false;

VRELTimingLogger::VRELTimingLogger() : active(false), occurrences(17) {
  _detailedTaskInfo = false;
}

VRELTimingLogger::~VRELTimingLogger() {
  try {
    Finalize();
  } catch (...) {
    // A listener or the monitor threw. An exception that left a destructor would terminate the process.
    RemoveFromBus();
  }
  _pMonitor = nullptr;
  while (!taskStack.IsEmpty()) delete static_cast<VRELTaskTimingInfo*>(taskStack.Pop());
}

void VRELTimingLogger::SetUp() {
  VRINResult const read = VRELEnvironment::GetVariable(L"VRELTaskTiming", _isTimerOn);
  if (!read.IsSuccess() || !_isTimerOn) return;
  VRELPerfTrackerStatus::instance.SetPerfTracking(true);
  bool isDetailed = false;
  if (VRELEnvironment::GetVariable(L"VRELTaskInfoDetailed", isDetailed).IsSuccess()) _detailedTaskInfo = isDetailed;
  _timer.Initialize();
}

void VRELTimingLogger::Stop() {
  if (!_isTimerOn) return;
  _timer.Finalize();
  VRELBasePerformanceMonitor::Clear();
}

void VRELTimingLogger::Initialize() {
  if (active) return;
  VRELInfo::Printf("Task Timing On");
  VRELEventBus::GetEventBus()->AddListener(this);
  active = true;
}

void VRELTimingLogger::Finalize() {
  if (active) PrintSummary();
  RemoveFromBus();
}

void VRELTimingLogger::RemoveFromBus() {
  VRELEventBus::GetEventBus()->RemoveListener(this);
  active = false;
}

void VRELTimingLogger::HandleEvent(VRELEvent& event) {
  if (!event.IsTimed()) return;
  auto* const taskEvent = dynamic_cast<VRELTaskEvent*>(&event);
  if (taskEvent == nullptr) return;
  auto task = std::make_unique<VRELTaskTimingInfo>();
  VRINResult result = taskEvent->GetTaskIdentifier(task->taskName);
  if (task->taskName.view() == u"Repair") return;
  result &= event.GetTime(task->time);
  result &= event.GetClock(task->clock);
  if (!result.IsSuccess()) return;
  int const kind = taskEvent->GetKind();
  if (kind == 0) {
    StartTask(std::move(task));
  } else if (kind == 1) {
    EndTask(*task);
  }
}

void VRELTimingLogger::StartTask(OpenTask task) {
  if (_detailedTaskInfo) PrintTaskLine(task->taskName, "Started");
  taskStack.Push(task.get());
  VRELTaskTimingInfo& start = *task.release();
  ProcessTimes times;
  if (!QueryTimes(times)) return;
  start.kernelTime = times.kernel;
  start.userTime = times.user;
}

void VRELTimingLogger::EndTask(VRELTaskTimingInfo const& end) {
  VRELString const& identifier = end.taskName;
  if (_detailedTaskInfo) PrintTaskLine(identifier, "Ending");
  OpenTask const start = PopTask(identifier);
  if (start == nullptr) return;
  VRELTaskOccurenceInfo occurrence;
  if (!KeepsOnlyLastRun(identifier)) occurrences.Get(identifier, occurrence);
  double const elapsed = ElapsedSeconds(*start, end);
  ++occurrence.count;
  occurrence.elapsed += elapsed;
  if (_detailedTaskInfo) PrintElapsed(identifier, elapsed);
  if (_pMonitor != nullptr) {
    AddTimes(*start, occurrence);
    if (_detailedTaskInfo) PrintTaskPerformance();
  }
  occurrences.Put(identifier, occurrence);
}

// Removes the innermost task with this identifier and all tasks inside it. Returns null if the task is not open; the
// stack is then empty.
VRELTimingLogger::OpenTask VRELTimingLogger::PopTask(VRELString const& identifier) {
  while (!taskStack.IsEmpty()) {
    OpenTask task(static_cast<VRELTaskTimingInfo*>(taskStack.Pop()));
    if (task->taskName.view() == identifier.view()) return task;
  }
  return nullptr;
}

void VRELTimingLogger::PrintSummary() const {
  bool const hasTimes = PrintProcessSummary();
  if (occurrences.Size() > 0) {
    PrintHeading();
    occurrences.InitEnumeration();
    VRELPair<VRELString, VRELTaskOccurenceInfo> row;
    while (occurrences.GetNext(row)) {
      PrintRow(row.key, row.value, hasTimes ? ProcessTimes{row.value.kernel, row.value.user} : ProcessTimes{});
    }
  }
  VRELInfo::Printf("================= End Timing Performance Summary =================");
}
