#include "VRELStartTranslateRepairEvent.h"

#include "VRELEventBus.h"

VRELStartTranslateRepairEvent::VRELStartTranslateRepairEvent(char const* typeOfEntity,
                                                             char const* representationOfEntity, int numberOfEntity,
                                                             VRELEventLevel level)
    : VRELStartTaskEvent("VRELStartTranslateRepairEvent", "Repair", level),
      entityType(typeOfEntity),
      representation(representationOfEntity),
      number(numberOfEntity) {}

void VRELStartTranslateRepairEvent::GetFormattedDescription(VRELOutputStream* stream) {
  if (entityType == nullptr || representation == nullptr) return;
  WriteText(stream, std::string(representation) + ' ' + entityType + '[' + std::to_string(number) + "]\n");
}

void VRELStartTranslateRepairEvent::Fire(char const* typeOfEntity, char const* representationOfEntity,
                                         int numberOfEntity) {
  VRELStartTranslateRepairEvent event(typeOfEntity, representationOfEntity, numberOfEntity, VREL_LEVEL_VERBOSE);
  VRELEventBus::GetEventBus()->Send(event);
}
