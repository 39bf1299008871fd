// End of the list of options in a log.
#pragma once

#include "VRELEndOptionsTaskEvent.h"

class EndOptionsEvent : public VRELEndOptionsTaskEvent {
 public:
  // Takes the number of options in the store and how many times an unknown name was set.
  EndOptionsEvent(VRINResult const& result, int storedCount, int unknownNameCount);

  // Writes "Options : 3 set, 1 unknown" and a line of hyphens as long as the heading of the list.
  void GetFormattedDescription(VRELOutputStream* stream) override;

 private:
  int setCount;
  int unknownCount;
};
