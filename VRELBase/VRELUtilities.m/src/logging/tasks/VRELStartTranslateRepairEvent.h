// Repair of an entity.
#pragma once

#include "VRELStartTaskEvent.h"

// Repair of an entity during the translation. It has no end event, and VRELTimingLogger ignores it.
class VREL_EXPORT VRELStartTranslateRepairEvent : public VRELStartTaskEvent {
 public:
  // Ownership: the strings are not copied and must outlive the event and its copies.
  VRELStartTranslateRepairEvent(char const* typeOfEntity, char const* representationOfEntity, int numberOfEntity,
                                VRELEventLevel level);

  // Writes "representation type[number]", or nothing if the type or the representation is null.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  char const* GetEntityType() const noexcept { return entityType; }
  int GetEntityNumber() const noexcept { return number; }
  char const* GetRepresentation() const noexcept { return representation; }

  // Sends the event with VREL_LEVEL_VERBOSE.
  static void Fire(char const* typeOfEntity, char const* representationOfEntity, int numberOfEntity);

 private:
  char const* entityType;
  char const* representation;
  int number;
};
