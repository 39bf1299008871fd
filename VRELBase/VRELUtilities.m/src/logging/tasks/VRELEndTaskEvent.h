// A task ends, with a result.
#pragma once

#include "VRELTaskEvent.h"

class VREL_EXPORT VRELEndTaskEvent : public VRELTaskEvent {
 public:
  // A silent end is for whoever measures tasks: a log shows nothing of it.
  VRELEndTaskEvent(VRINResult const& result, char const* name, char const* identifier, VRELEventLevel level,
                   bool isSilent);

  // Unless silent: the event name and the message of the result, between two rules.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  // 1.
  int GetKind() override;

  void setTaskResult(VRINResult const& result) noexcept { taskResult = result; }
  VRINResult getTaskResult() const noexcept { return taskResult; }

  // Sends an end only while VRELPerfTrackerStatus::instance is on: otherwise no event is built.
  static void Fire(VRINResult const& result, char const* name, char const* identifier, VRELEventLevel level,
                   bool isSilent);

 protected:
  // A line of 80 hyphens.
  static constexpr char Rule[] = "--------------------------------------------------------------------------------\n";

  // What GetFormattedDescription writes here; empty when silent.
  std::string ResultText() const;

 private:
  VRINResult taskResult;
  bool silent;
};
