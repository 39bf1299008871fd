// Progress of a third-party component.
#pragma once

#include "VRELEvent.h"
#include "VRELExport.h"
#include "VRINResult.h"

// Progress of a third-party component. Listeners of the application read it with GetProgress. Loggers write nothing for
// it, and it is not timed.
class VREL_EXPORT VRELThirdPartyProgressEvent : public VRELEvent {
 public:
  explicit VRELThirdPartyProgressEvent(double theProgress);

  // Writes nothing.
  void GetFormattedDescription(VRELOutputStream* stream) override;
  // Returns false.
  bool IsTimed() override;

  // Stores the progress in `value` and returns VREL_S_OK.
  VRINResult GetProgress(double& value) const;

  // Sends the event.
  static void Fire(double progress);

 private:
  double progress;
};
