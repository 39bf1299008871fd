// Switch for the measurement of tasks.
#pragma once

#include "VRELExport.h"

// Switch for events that only serve the measurement of tasks: VRELStartTaskEvent::Fire and VRELEndTaskEvent::Fire send
// only while it is on. VRELTimingLogger::SetUp turns it on.
class VREL_EXPORT VRELPerfTrackerStatus {
 public:
  // Creates a switch that is off.
  VRELPerfTrackerStatus();
  virtual ~VRELPerfTrackerStatus();

  bool IsPerfTracking() const noexcept { return tracking; }
  void SetPerfTracking(bool newTracking) noexcept { tracking = newTracking; }

  // Switch of the process. Exists from load to exit.
  static VRELPerfTrackerStatus instance;

 private:
  bool tracking;
};
