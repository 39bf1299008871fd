// End of the list of options.
#pragma once

#include "VRELEndTaskEvent.h"

// End of the list of options in a log. Abstract: a format module derives from it and writes the closing text.
class VREL_EXPORT VRELEndOptionsTaskEvent : public VRELEndTaskEvent {
 public:
  explicit VRELEndOptionsTaskEvent(VRINResult const& result);

  void GetFormattedDescription(VRELOutputStream* stream) override = 0;
};
