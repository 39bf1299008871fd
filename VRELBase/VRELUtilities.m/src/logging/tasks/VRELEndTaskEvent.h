// End of a task.
#pragma once

#include "VRELTaskEvent.h"

// End of a task, with its result.
class VREL_EXPORT VRELEndTaskEvent : public VRELTaskEvent {
 public:
  // A silent event writes nothing to logs; VRELTimingLogger receives it like any other.
  VRELEndTaskEvent(VRINResult const& result, char const* name, char const* identifier, VRELEventLevel level,
                   bool isSilent);

  // Writes the event name and the message of the result between two rules of 80 hyphens, unless the event is silent.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  // Returns 1.
  int GetKind() override;

  void setTaskResult(VRINResult const& result) noexcept { taskResult = result; }
  VRINResult getTaskResult() const noexcept { return taskResult; }

  // Sends an end event if VRELPerfTrackerStatus::instance is on; otherwise does nothing.
  static void Fire(VRINResult const& result, char const* name, char const* identifier, VRELEventLevel level,
                   bool isSilent);

 protected:
  // Line of 80 hyphens.
  static constexpr char Rule[] = "--------------------------------------------------------------------------------\n";

  // Returns what VRELEndTaskEvent::GetFormattedDescription writes; empty for a silent event.
  std::string ResultText() const;

 private:
  VRINResult taskResult;
  bool silent;
};
