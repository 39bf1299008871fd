// Timer of the tasks of a translation.
#pragma once

#include <memory>

#include "VRELEventListener.h"
#include "VRELExport.h"
#include "VRELHashMap.h"
#include "VRELStack.h"
#include "VRELString.h"
#include "VRELTaskOccurenceInfo.h"
#include "VRELTaskTimingInfo.h"

class VRELBasePerformanceMonitor;

// Listener that measures tasks: the time of each task, the number of its runs and, with a process monitor, the kernel
// and user time. It prints a summary on the channel VRELInfo.
//
// It is off unless the environment turns it on:
//
//   VRELTaskTiming        Yes, True or On: measure
//   VRELTaskInfoDetailed  Yes, True or On: print each start and end too
//
//   VRELTimingLogger::SetUp();
//   ...  // the translation
//   VRELTimingLogger::Stop();
//
// Tasks nest. An end event closes the innermost open task with its identifier and drops the tasks inside it. An end
// event without an open task drops all open tasks.
//
// Compatibility: tasks "Repair" are not measured; "Conversion" and "Translation" keep only their last run, while the
// runs of all other tasks are added up.
// Thread safety: none.
class VREL_EXPORT VRELTimingLogger : public VRELEventListener {
 public:
  // Sets _detailedTaskInfo to false.
  VRELTimingLogger();
  VRELTimingLogger(VRELTimingLogger const&) = delete;
  VRELTimingLogger& operator=(VRELTimingLogger const&) = delete;

  // Records the start or the end of a task. The elapsed time is processor time, or wall-clock time if that is above 600
  // seconds.
  void HandleEvent(VRELEvent& event) override;

  // Calls Finalize() and sets _pMonitor to null. Exceptions do not leave the destructor.
  ~VRELTimingLogger() override;

  // Reads the environment. If it asks for times, turns on VRELPerfTrackerStatus::instance and initializes _timer.
  static void SetUp();
  // Finalizes _timer and clears the installed monitor if SetUp turned the timer on; otherwise does nothing.
  static void Stop();

  // Adds the logger to the bus, unless it is there already.
  void Initialize();
  // Prints the summary if the logger is active, and removes the logger from the bus. Recorded rows stay, and a later
  // Initialize() continues to add to them.
  //
  // Compatibility: without a monitor the summary has a closing line but no opening line.
  void Finalize();

  // Logger of the process. Exists from load to exit, when it is finalized.
  static VRELTimingLogger _timer;
  // Process monitor; not owned. Null until a module sets it.
  static VRELBasePerformanceMonitor* _pMonitor;
  // Settings read from the environment.
  static bool _isTimerOn;
  static bool _detailedTaskInfo;

 private:
  using OpenTask = std::unique_ptr<VRELTaskTimingInfo>;

  void StartTask(OpenTask task);
  void EndTask(VRELTaskTimingInfo const& end);
  OpenTask PopTask(VRELString const& identifier);
  void PrintSummary() const;
  void RemoveFromBus();

  bool active;
  VRELStack taskStack;
  VRELHashMap<VRELString, VRELTaskOccurenceInfo> occurrences;
};
