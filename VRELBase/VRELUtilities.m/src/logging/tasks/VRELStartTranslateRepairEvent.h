// An entity is repaired on its way.
#pragma once

#include "VRELStartTaskEvent.h"

// Has no end: repairs are not measured.
class VREL_EXPORT VRELStartTranslateRepairEvent : public VRELStartTaskEvent {
 public:
  // The texts are not copied and must outlive the event and its copies.
  VRELStartTranslateRepairEvent(char const* typeOfEntity, char const* representationOfEntity, int numberOfEntity,
                                VRELEventLevel level);

  // "representation type[number]"; nothing where one of the texts is null.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  char const* GetEntityType() const noexcept { return entityType; }
  int GetEntityNumber() const noexcept { return number; }
  char const* GetRepresentation() const noexcept { return representation; }

  // Sends one at level VERBOSE.
  static void Fire(char const* typeOfEntity, char const* representationOfEntity, int numberOfEntity);

 private:
  char const* entityType;
  char const* representation;
  int number;
};
