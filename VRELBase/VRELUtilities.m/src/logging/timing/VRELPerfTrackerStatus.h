// Whether anybody measures tasks.
#pragma once

#include "VRELExport.h"

// The switch that arms the events which carry nothing but times: VRELStartTaskEvent::Fire and VRELEndTaskEvent::Fire
// send while it is on. VRELTimingLogger::SetUp turns it on.
class VREL_EXPORT VRELPerfTrackerStatus {
 public:
  // Off.
  VRELPerfTrackerStatus();
  virtual ~VRELPerfTrackerStatus();

  bool IsPerfTracking() const noexcept { return tracking; }
  void SetPerfTracking(bool newTracking) noexcept { tracking = newTracking; }

  // The switch of the process, alive from load to exit.
  static VRELPerfTrackerStatus instance;

 private:
  bool tracking;
};
