// How far the work of a component has come that is not of the family.
#pragma once

#include "VRELEvent.h"
#include "VRELExport.h"
#include "VRINResult.h"

// An event of level INFO for the listeners of the application. It has no text, so that no log shows it, and no time.
class VREL_EXPORT VRELThirdPartyProgressEvent : public VRELEvent {
 public:
  explicit VRELThirdPartyProgressEvent(double theProgress);

  // Writes nothing.
  void GetFormattedDescription(VRELOutputStream* stream) override;
  bool IsTimed() override;

  // Always VREL_S_OK.
  VRINResult GetProgress(double& value) const;

  // Sends such an event.
  static void Fire(double progress);

 private:
  double progress;
};
