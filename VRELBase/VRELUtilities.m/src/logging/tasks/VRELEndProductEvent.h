// The product that translates goes down: the last line of a log.
#pragma once

#include "VRELEndTaskEvent.h"
#include "VRELStreamFormatter.h"

class VREL_EXPORT VRELEndProductEvent : public VRELEndTaskEvent {
 public:
  explicit VRELEndProductEvent(VRINResult const& result);

  // A sentence on the result. That a success other than VREL_S_OK is told as a failure is promised.
  void GetFormattedDescription(VRELOutputStream* stream) override;

 private:
  VRELStreamFormatter formatter;
};
