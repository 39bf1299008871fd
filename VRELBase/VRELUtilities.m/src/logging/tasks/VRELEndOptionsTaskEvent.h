// The options of a translation are listed.
#pragma once

#include "VRELEndTaskEvent.h"

// Derive from it to bring the text that closes the list.
class VREL_EXPORT VRELEndOptionsTaskEvent : public VRELEndTaskEvent {
 public:
  explicit VRELEndOptionsTaskEvent(VRINResult const& result);

  void GetFormattedDescription(VRELOutputStream* stream) override = 0;
};
