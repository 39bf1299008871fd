// Channel for warnings.
#pragma once

#include "VRELIndentedChannel.h"

class VRELWarningEvent;

// Indentation counter of VRELWarning.
extern VREL_EXPORT int _VRELWarningTab;

extern template class VRELIndentedChannel<VRELWarningEvent, _VRELWarningTab>;

// Channel that sends VRELWarningEvent at level WARNING; see VRELIndentedChannel.
//
//   VRELWarning::Printf("face %d is skipped", face);
class VREL_EXPORT VRELWarning : public VRELIndentedChannel<VRELWarningEvent, _VRELWarningTab> {
 public:
  virtual ~VRELWarning();
};
