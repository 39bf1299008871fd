// The options of a translation are about to be listed.
#pragma once

#include "VRELStartTaskEvent.h"

class VREL_EXPORT VRELStartOptionsTaskEvent : public VRELStartTaskEvent {
 public:
  VRELStartOptionsTaskEvent();

  // The heading of the list.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  // Sends one.
  static void Fire();
};
