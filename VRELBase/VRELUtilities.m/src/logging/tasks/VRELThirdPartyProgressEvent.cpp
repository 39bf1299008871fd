#include "VRELThirdPartyProgressEvent.h"

#include "VRELEventBus.h"

VRELThirdPartyProgressEvent::VRELThirdPartyProgressEvent(double theProgress)
    : VRELEvent("VRELThirdPartyProgressEvent", VREL_LEVEL_INFO), progress(theProgress) {}

void VRELThirdPartyProgressEvent::GetFormattedDescription(VRELOutputStream* /*stream*/) {}

bool VRELThirdPartyProgressEvent::IsTimed() {
  return false;
}

VRINResult VRELThirdPartyProgressEvent::GetProgress(double& value) const {
  value = progress;
  return VREL_S_OK;
}

void VRELThirdPartyProgressEvent::Fire(double progress) {
  VRELThirdPartyProgressEvent event(progress);
  VRELEventBus::Fire(event);
}
