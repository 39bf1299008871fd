// Measures the tasks of a translation.
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

// Listens to the task events, and tells on the channel VRELInfo how long each task took, how often it ran and, where
// there is a monitor, what it cost the process. Off unless the environment asks for it:
//
//   VRELTaskTiming        Yes, True or On: measure
//   VRELTaskInfoDetailed  the same words: tell of each start and end too
//
//   VRELTimingLogger::SetUp();
//   ...  // the translation
//   VRELTimingLogger::Stop();
//
// Tasks nest: an end closes the nearest open task of its identifier, and drops those above it. An end of a task that is
// not open drops all. That repairs are not measured, and that "Conversion" and "Translation" keep their last run alone,
// while every other task adds up, is promised. One thread.
class VREL_EXPORT VRELTimingLogger : public VRELEventListener {
 public:
  // Clears _detailedTaskInfo.
  VRELTimingLogger();
  VRELTimingLogger(VRELTimingLogger const&) = delete;
  VRELTimingLogger& operator=(VRELTimingLogger const&) = delete;

  // Takes the start or the end of a task. The processor time counts, unless the task took more than 600 seconds on the
  // wall clock, which then counts.
  void HandleEvent(VRELEvent& event) override;

  // Finalizes, and clears _pMonitor.
  ~VRELTimingLogger() override;

  // Reads the environment, and starts the logger of the process and the events that it lives on if it says so.
  static void SetUp();
  // Finalizes the logger of the process and clears the installed monitor. Nothing if the environment did not ask for
  // times.
  static void Stop();

  // Joins the bus, unless it is there.
  void Initialize();
  // Tells the summary, if the logger is on the bus, and leaves it. What was measured stays: after another Initialize
  // the rows go on. That without a monitor the summary has a closing line and no opening line is promised.
  void Finalize();

  // The logger of the process, alive from load to exit, where it finalizes.
  static VRELTimingLogger _timer;
  // Not owned; null until a module sets it.
  static VRELBasePerformanceMonitor* _pMonitor;
  // What the environment said.
  static bool _isTimerOn;
  static bool _detailedTaskInfo;

 private:
  using OpenTask = std::unique_ptr<VRELTaskTimingInfo>;

  void StartTask(OpenTask task);
  void EndTask(VRELTaskTimingInfo const& end);
  OpenTask PopTask(VRELString const& identifier);
  void PrintSummary() const;
  void Leave();

  bool active;
  VRELStack taskStack;
  VRELHashMap<VRELString, VRELTaskOccurenceInfo> occurrences;
};
