// End of a run of the product.
#pragma once

#include "VRELEndTaskEvent.h"
#include "VRELStreamFormatter.h"

// End of a run of the product: the last line of a log.
class VREL_EXPORT VRELEndProductEvent : public VRELEndTaskEvent {
 public:
  explicit VRELEndProductEvent(VRINResult const& result);
  VRELEndProductEvent(VRELEndProductEvent const& other);

  // Writes a sentence with the result.
  //
  // Compatibility: every result except VREL_S_OK and VREL_E_ABORTED is written as a failure, partial success included.
  void GetFormattedDescription(VRELOutputStream* stream) override;

 private:
  VRELStreamFormatter formatter;
};
