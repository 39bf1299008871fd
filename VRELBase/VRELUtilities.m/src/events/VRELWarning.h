// The channel for what is wrong and does not stop the work.
#pragma once

#include "VRELIndentedChannel.h"

class VRELWarningEvent;

// The indentation of the channel.
extern VREL_EXPORT int _VRELWarningTab;

extern template class VRELIndentedChannel<VRELWarningEvent, _VRELWarningTab>;

// Sends VRELWarningEvent, at level WARNING.
class VREL_EXPORT VRELWarning : public VRELIndentedChannel<VRELWarningEvent, _VRELWarningTab> {
 public:
  virtual ~VRELWarning();
};
