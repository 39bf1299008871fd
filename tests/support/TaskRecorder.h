// Listener that records task events.
#pragma once

#include <string>
#include <vector>

#include "TaskEventFacts.h"
#include "VRELEndTaskEvent.h"
#include "VRELEventBus.h"
#include "VRELPerfTrackerStatus.h"

struct RecordedTask {
  std::string name;
  std::string identifier;
  int kind;
  int level;
  long result;  // -1 for a start
  bool isStamped;
  std::string text;
};

// Registered on the bus during its lifetime.
class TaskRecorder : public VRELEventListener {
 public:
  TaskRecorder() { VRELEventBus::GetEventBus()->AddListener(this); }
  ~TaskRecorder() override { VRELEventBus::GetEventBus()->RemoveListener(this); }
  TaskRecorder(TaskRecorder const&) = delete;
  TaskRecorder& operator=(TaskRecorder const&) = delete;

  void HandleEvent(VRELEvent& event) override {
    auto* const task = dynamic_cast<VRELTaskEvent*>(&event);
    if (task == nullptr) return;
    auto const* const end = dynamic_cast<VRELEndTaskEvent const*>(task);
    long ticks = 0;
    long seconds = 0;
    bool const isStamped = event.GetClock(ticks) == VREL_S_OK && event.GetTime(seconds) == VREL_S_OK;
    tasks.push_back({event.GetEventName() == nullptr ? "(none)" : event.GetEventName(), IdentifierOf(*task),
                     task->GetKind(), event.GetLevel(), end == nullptr ? -1 : static_cast<long>(end->getTaskResult()),
                     isStamped, DescriptionOf(event)});
  }

  std::vector<RecordedTask> tasks;
};

// Enables performance events of the process during its lifetime.
class PerfTracking {
 public:
  PerfTracking() { VRELPerfTrackerStatus::instance.SetPerfTracking(true); }
  ~PerfTracking() { VRELPerfTrackerStatus::instance.SetPerfTracking(false); }
  PerfTracking(PerfTracking const&) = delete;
  PerfTracking& operator=(PerfTracking const&) = delete;
};
