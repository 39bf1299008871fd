#include "VRELEndProductEvent.h"

#include "VRELFormatterBinding.h"

VRELEndProductEvent::VRELEndProductEvent(VRINResult const& result)
    : VRELEndTaskEvent(result, "Product End", "Product", VREL_LEVEL_INFO, false), formatter(nullptr) {}

// The formatter has a stream only during GetFormattedDescription, so there is nothing to copy.
VRELEndProductEvent::VRELEndProductEvent(VRELEndProductEvent const& other)
    : VRELEndTaskEvent(other), formatter(nullptr) {}

void VRELEndProductEvent::GetFormattedDescription(VRELOutputStream* stream) {
  VRELFormatterBinding const binding(formatter, stream);
  VRINResult const result = getTaskResult();
  if (result == VREL_S_OK) {
    formatter << "Product Completed Successfully\n";
  } else if (result == VREL_E_ABORTED) {
    formatter << "Product Aborted\n";
  } else {
    formatter << "Product Failed with code " << static_cast<long>(result) << " (" << result.GetMessage() << ")\n";
  }
}
