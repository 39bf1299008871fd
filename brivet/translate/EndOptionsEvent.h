// What closes the list of options in a log.
#pragma once

#include "VRELEndOptionsTaskEvent.h"

class EndOptionsEvent : public VRELEndOptionsTaskEvent {
 public:
  // How often an option was set, and how often one that no translator knows.
  EndOptionsEvent(VRINResult const& result, int setCount, int unknownCount);

  // "Options : 3 set, 1 unknown", and a line of hyphens as long as the heading of the list.
  void GetFormattedDescription(VRELOutputStream* stream) override;

 private:
  int set;
  int unknown;
};
