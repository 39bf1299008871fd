// Channel for detailed messages.
#pragma once

#include "VRELIndentedChannel.h"

class VRELMessageEvent;

// Indentation counter of VRELVerbose.
extern VREL_EXPORT int _VRELVerboseTab;

extern template class VRELIndentedChannel<VRELMessageEvent, _VRELVerboseTab>;

// Channel for detailed messages; see VRELIndentedChannel.
//
//   VRELVerbose::Printf("%d edges", count);
//
// Compatibility: sends VRELMessageEvent at level INFO, as VRELInfo does. Only VRELVerboseEvent::Fire sends at VERBOSE.
class VREL_EXPORT VRELVerbose : public VRELIndentedChannel<VRELMessageEvent, _VRELVerboseTab> {
 public:
  virtual ~VRELVerbose();
};
