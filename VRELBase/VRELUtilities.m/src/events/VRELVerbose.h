// The channel for details.
#pragma once

#include "VRELIndentedChannel.h"

class VRELMessageEvent;

// The indentation of the channel.
extern VREL_EXPORT int _VRELVerboseTab;

extern template class VRELIndentedChannel<VRELMessageEvent, _VRELVerboseTab>;

// Sends VRELMessageEvent, at level INFO. That it is not VRELVerboseEvent, which only its own Fire sends, is promised.
class VREL_EXPORT VRELVerbose : public VRELIndentedChannel<VRELMessageEvent, _VRELVerboseTab> {
 public:
  virtual ~VRELVerbose();
};
